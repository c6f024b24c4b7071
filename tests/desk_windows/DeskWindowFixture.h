#pragma once

#include "desk/windows/frmScmain.h"
#include "ops/SharedDatabase.h"
#include "tests/desk/DeskFixture.h"
#include "tests/support/Windows.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTest>

namespace velmora {

// The main window on the test site: Thursday, March 5, 2026, 2:15 PM. Reports go into text files, which are kept.
class DeskWindowTest : public DeskFixture {
protected:
    explicit DeskWindowTest(const QString& startupArgument = {}) : DeskFixture(startupArgument) {
        fakes_.eventLoop.onEvents = [] { QApplication::processEvents(); };
        fakes_.userSettings.values[u"Velmora/Printer Settings/Destination"_s] = u"3"_s;
        OpenDesk();
    }

    void OpenDesk() {
        window_ = std::make_unique<frmScmain>(
            DeskParts{fakes_.program, job_,
                      [this](ReportContext& context, const ReportRequest& request) {
                          requests.push_back(request);
                          if (std::holds_alternative<DailyRequest>(request)) {
                              job_.SetOutputTarget(static_cast<qint16>(context.delivery.target));
                              PrintReport(context, request);
                          } else if (std::holds_alternative<UsageRequest>(request)) {
                              throw ProgramError(ErrorNumber::Unavailable, u"no query"_s);
                          }
                      },
                      [this](qint32 reservation, QWidget*) { notesOf.push_back(reservation); }});
        window_->Form_Load();
        window_->show();
        // Pages are made when they are chosen for the first time.
        auto& tabs = Child<QTabBar>(u"TabStrip1"_s);
        for (int i = tabs.count() - 1; i >= 0; --i) {
            tabs.setCurrentIndex(i);
        }
        QApplication::setActiveWindow(window_.get());
    }

    template <typename T = QWidget>
    T& Child(const QString& name) const {
        return velmora::Child<T>(*window_, name);
    }
    void Click(const QString& name) {
        auto& button = Child<QAbstractButton>(name);
        EXPECT_TRUE(button.isVisible() && button.isEnabled()) << name.toStdString();
        button.click();
    }
    // Types a date and leaves the box by Return's commit.
    void TypeDate(const QString& name, const QString& text) {
        auto& box = Child<QLineEdit>(name);
        box.setFocus();
        box.selectAll();
        QTest::keyClicks(&box, text);
        QTest::keyClick(&box, Qt::Key_Tab);
    }
    QString Text(const QString& name) const {
        if (auto* label = window_->findChild<QLabel*>(name)) {
            return label->text();
        }
        return Child<QLineEdit>(name).text();
    }
    // A caption as it is read, without its mnemonic mark.
    QString Caption(const QString& name) const { return Child<QAbstractButton>(name).text().remove(u'&'); }
    void Choose(const QString& tabKey) {
        auto& tabs = Child<QTabBar>(u"TabStrip1"_s);
        for (int i = 0; i < tabs.count(); ++i) {
            if (tabs.tabData(i) == tabKey) {
                tabs.setCurrentIndex(i);
            }
        }
    }
    // What another desk does, or what the store holds: the first value of the first row.
    QString Sql(const QString& sql) {
        if (!sql.startsWith(u"SELECT"_s)) {
            database_->Execute(sql);
            return {};
        }
        const auto rows = database_->OpenRecordset(sql);
        return rows->EndOfFile() ? u"no row"_s : rows->FieldAt(0).ToText();
    }

    // What the buttons asked for.
    std::vector<ReportRequest> requests;
    std::vector<qint32> notesOf;
    std::unique_ptr<frmScmain> window_;
};

} // namespace velmora
