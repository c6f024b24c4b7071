#pragma once

#include "data/Configuration.h"
#include "print/PrintJob.h"
#include "print/ReportFile.h"
#include "tests/support/Fakes.h"
#include "tests/support/FolderTest.h"

namespace velmora::print {

using namespace Qt::StringLiterals;

// Keeps what was delivered.
class FakeDelivery : public DocumentSink {
public:
    void SendMail(const QByteArray& text) override { Take("mail", text); }
    bool SaveFile(const QByteArray& text, ReportFileKind kind) override {
        Take(kind == ReportFileKind::Html ? "html" : kind == ReportFileKind::Pdf ? "pdf" : "text", text);
        return true;
    }

    // Failures to come before a delivery succeeds.
    int failures = 0;
    std::vector<std::pair<std::string, QByteArray>> delivered;

private:
    void Take(const char* how, const QByteArray& text) {
        if (failures > 0) {
            --failures;
            throw ProgramError(ErrorNumber::DiskFull, u"no room"_s);
        }
        delivered.emplace_back(how, text);
    }
};

// A program in a data directory of its own, with a print job whose reports end in `delivery`.
class PrintFixture : public FolderTest {
protected:
    PrintFixture() { Settings().DataDirectory = folder_.path(); }

    QStringList FileNames() const { return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name); }

    fakes::TestProgram fakes_;
    FakeDelivery delivery_;
    std::vector<PrintAttribute> attributes_;
    PrintJob job_{{fakes_.program.services(), delivery_, [this] { return attributes_; }}};
};

} // namespace velmora::print
