// The pages under the hands of staff: the steps of pages.txt.
#include "data/LookupLists.h"
#include "reports/RequestJson.h"
#include "tests/desk_windows/DeskWindowFixture.h"
#include "tests/support/Script.h"

#include <QAction>
#include <QGroupBox>
#include <QJsonDocument>
#include <QListView>
#include <QPlainTextEdit>
#include <QTimer>

namespace velmora {
namespace {

class PagesScript : public DeskWindowTest, public testing::WithParamInterface<ScriptCase> {
protected:
    // The tasks of the next day.
    void OpenTasks() {
        fakes_.clock.now = *MakeDateTime({2026, 3, 6, 8, 0, 0});
        window_.reset();
        OpenDesk();
        Choose(u"View"_s);
    }
    QString List() const {
        QStringList texts;
        const auto* model = Child<QListView>(u"lstStatus"_s).model();
        for (int row = 0; row < model->rowCount(); ++row) {
            texts += model->index(row, 0).data().toString();
        }
        return texts.join(u'|');
    }
    void Pick(const QString& text) {
        auto& list = Child<QListView>(u"lstStatus"_s);
        list.setCurrentIndex(list.model()->index(static_cast<int>(List().split(u'|').indexOf(text)), 0));
    }
    // "txtFind Alt+Home"
    void Press(const QString& words) {
        const QKeyCombination key = QKeySequence(words.section(u' ', 1))[0];
        QTest::keyClick(&Child(words.section(u' ', 0, 0)), key.key(), key.keyboardModifiers());
    }
    void Activate() {
        QEvent activation(QEvent::WindowActivate);
        QApplication::sendEvent(window_.get(), &activation);
    }
    // Until the page looks by itself what other desks did.
    void WaitForRefresh() {
        auto& timer = Child<QTimer>(u"tmrRefresh"_s);
        EXPECT_LE(timer.interval(), 5000);
        timer.start(1);
        EXPECT_TRUE(QTest::qWaitFor([&] { return Child<QCheckBox>(u"chkSLockStart"_s).isChecked(); }, 60'000));
    }
    QString SqlOf(QString text) { return Sql(text.replace(u"{lblID}"_s, Text(u"lblID"_s))); }

    ScriptWords Words();
};

ScriptWords PagesScript::Words() {
    const auto& messages = fakes_.dialogs.messages;
    ScriptWords words;
    words.actions = {
        {u"tasks"_s, [this](const QString&) { OpenTasks(); }},
        {u"page"_s, [this](const QString& key) { Choose(key); }},
        {u"click"_s, [this](const QString& name) { Click(name); }},
        {u"press"_s, [this](const QString& keys) { Press(keys); }},
        {u"keys"_s,
         [this](const QString& text) { QTest::keyClicks(&Child(text.section(u' ', 0, 0)), text.section(u' ', 1)); }},
        {u"focusOn"_s, [this](const QString& name) { Child(name).setFocus(); }},
        {u"clear"_s, [this](const QString& name) { Child<QLineEdit>(name).clear(); }},
        {u"date"_s, [this](const QString& text) { TypeDate(text.section(u' ', 0, 0), text.section(u' ', 1)); }},
        {u"pick"_s, [this](const QString& text) { Pick(text); }},
        {u"choose"_s, [this](const QString& name) { Child<QAction>(name).trigger(); }},
        {u"answer"_s, [this](const QString& answers) { PlanAnswers(fakes_.dialogs.answers, answers); }},
        {u"fail"_s, [this](const QString& answers) { PlanAnswers(fakes_.errors.answers, answers); }},
        {u"say"_s, [this](const QString& text) { fakes_.dialogs.texts = {text}; }},
        {u"sql"_s, [this](const QString& sql) { SqlOf(sql); }},
        {u"fill"_s, [](const QString&) { FillAssetCollection(OpenedDatabase()); }},
        {u"day"_s,
         [this](const QString& day) {
             fakes_.clock.now = *MakeDateTime({2026, 3, day.toInt(), 8, 0, 0});
         }},
        {u"activate"_s, [this](const QString&) { Activate(); }},
        {u"wait"_s, [this](const QString&) { WaitForRefresh(); }},
    };
    words.values = {
        {u"text"_s, [this](const QString& name) { return Text(name); }},
        {u"caption"_s, [this](const QString& name) { return Caption(name); }},
        {u"title"_s, [this](const QString& name) { return Child<QGroupBox>(name).title(); }},
        {u"shown"_s, [this](const QString& name) { return YesNo(Child(name).isVisible()); }},
        {u"enabled"_s, [this](const QString& name) { return YesNo(Child(name).isEnabled()); }},
        {u"usable"_s, [this](const QString& name) { return YesNo(Child<QAction>(name).isEnabled()); }},
        {u"checked"_s, [this](const QString& name) { return YesNo(Child<QAbstractButton>(name).isChecked()); }},
        {u"focus"_s, [](const QString&) { return QApplication::focusWidget()->objectName(); }},
        {u"list"_s, [this](const QString&) { return List(); }},
        {u"summary"_s, [this](const QString&) { return Child<QPlainTextEdit>(u"picStatus"_s).toPlainText(); }},
        {u"sql"_s, [this](const QString& sql) { return SqlOf(sql); }},
        {u"notes"_s, [this](const QString&) { return QString::number(notesOf.back()); }},
        {u"message"_s, [&messages](const QString&) { return messages.back().text; }},
        {u"messages"_s, [&messages](const QString&) { return QString::number(messages.size()); }},
        {u"request"_s,
         [this](const QString&) {
             return QString::fromUtf8(QJsonDocument(ToJson(requests.back())).toJson(QJsonDocument::Compact));
         }},
        {u"errors"_s, [this](const QString&) { return QString::number(fakes_.errors.reports.size()); }},
        {u"error"_s, [this](const QString&) { return fakes_.errors.reports.at(0).error.Description(); }},
        {u"progress"_s, [this](const QString&) { return fakes_.progress.shown.back().first; }},
        {u"beeps"_s, [this](const QString&) { return QString::number(fakes_.eventLoop.beeps); }},
        {u"report"_s, [this](const QString&) { return QString::fromUtf8(delivery_.delivered.back()); }},
        {u"reports"_s, [this](const QString&) { return QString::number(delivery_.delivered.size()); }},
    };
    return words;
}

TEST_P(PagesScript, Runs) {
    RunScript(GetParam(), Words());
}

INSTANTIATE_TEST_SUITE_P(Pages, PagesScript, testing::ValuesIn(ReadScript(u"desk_windows/pages.txt"_s)), CaseName);

} // namespace
} // namespace velmora
