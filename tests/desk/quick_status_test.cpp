#include "tasks/QuickStatus.h"
#include "tests/desk/DeskFixture.h"

namespace velmora {
namespace {

class QuickStatusTest : public DeskFixture {
protected:
    QStringList Texts(qint16 statusType) {
        statusType_ = statusType;
        entries_ = FillStatusList(fakes_.program, statusType, *faulty_);
        QStringList texts;
        for (const StatusEntry& entry : entries_) {
            texts += entry.text;
        }
        return texts;
    }
    QStringList Summary(const QString& text) {
        const auto entry = std::ranges::find_if(
            entries_, [&](const StatusEntry& each) { return each.text.startsWith(text, Qt::CaseInsensitive); });
        return entry == entries_.end() ? QStringList(u"no entry"_s)
                                       : StatusSummary(fakes_.program, statusType_, *faulty_, *entry);
    }

    qint16 statusType_ = 0;
    std::vector<StatusEntry> entries_;
};

TEST_F(QuickStatusTest, SumsUpWhatHasNotEndedByItsEnd) {
    Texts(1);
    fakes_.clock.now = *MakeDateTime({2026, 3, 6, 17, 0, 0});
    // Number 1 ends this very second.
    EXPECT_EQ(Summary(u"Boardroom"_s),
              QStringList({u"Summary for Boardroom"_s,
                           u"From 3/6/2026 6:00 PM Until 3/7/2026 in Boardroom - Conference : Reception"_s,
                           u"From 3/7/2026 10:00 AM Until 3/8/2026 12:00 PM in Boardroom - Conference : Saturday"_s,
                           u"From 3/9/2026 10:00 AM Until 3/9/2026 12:00 PM in Boardroom - Conference : Monday"_s}));
    Texts(0);
    EXPECT_EQ(Summary(u"Abel"_s), QStringList(u"Summary for Abel, Anna"_s));
    fakes_.clock.now = *MakeDateTime({2026, 3, 6, 8, 0, 0});
    EXPECT_EQ(Summary(u"O\"Hara"_s),
              QStringList({u"Summary for O\"Hara, Jo \"Jo\""_s,
                           u"From 3/6/2026 9:00 AM Until 3/6/2026 10:00 AM in B12 - Office : Move"_s}));
}

TEST_F(QuickStatusTest, ANameWithACommaIsFound) {
    database_->Execute(u"Insert into Person (LastName, FirstName) values (\"King, Jr.\", \"Al\")");
    database_->Execute(u"Update Reservation set LastName = \"King, Jr.\", FirstName = \"Al\" where ID = 41");
    Texts(0);
    EXPECT_EQ(Summary(u"King"_s).size(), 2);
}

TEST_F(QuickStatusTest, FailuresAreReported) {
    faulty_->failures[u"Select * from Person"_s] = 1;
    fakes_.dialogs.answers = {Answer::Ok};
    EXPECT_EQ(Texts(0), QStringList());
    EXPECT_EQ(fakes_.dialogs.messages.back().text, u"Error occured filling select list: the share is away"_s);

    Texts(0);
    faulty_->failures[u"SELECT * FROM Asset INNER"_s] = 2;
    fakes_.errors.answers = {Answer::Retry, Answer::Ignore};
    EXPECT_EQ(Summary(u"Abel"_s), QStringList(u"Summary for Abel, Anna"_s));
    EXPECT_EQ(fakes_.errors.reports.back().place.procedure, u"Status Summary"_s);
    EXPECT_EQ(fakes_.eventLoop.pointer, Pointer::Default);
}

} // namespace
} // namespace velmora
