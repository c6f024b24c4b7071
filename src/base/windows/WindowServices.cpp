#include "base/windows/WindowServices.h"

#include "base/Translate.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QFontDialog>
#include <QGridLayout>
#include <QInputDialog>
#include <QMessageBox>
#include <QThread>

#include <algorithm>
#include <array>

namespace velmora {

namespace {

struct ButtonRow {
    Buttons buttons;
    QMessageBox::StandardButtons shown;
    // What Escape and closing the box answer.
    QMessageBox::StandardButton escape;
};

constexpr std::array buttonRows = {
    ButtonRow{Buttons::Ok, QMessageBox::Ok, QMessageBox::Ok},
    ButtonRow{Buttons::OkCancel, QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Cancel},
    ButtonRow{Buttons::AbortRetryIgnore, QMessageBox::Abort | QMessageBox::Retry | QMessageBox::Ignore,
              QMessageBox::NoButton},
    ButtonRow{Buttons::YesNoCancel, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel, QMessageBox::Cancel},
    ButtonRow{Buttons::YesNo, QMessageBox::Yes | QMessageBox::No, QMessageBox::NoButton},
    ButtonRow{Buttons::RetryCancel, QMessageBox::Retry | QMessageBox::Cancel, QMessageBox::Cancel},
};

// By icon.
constexpr QMessageBox::Icon icons[] = {QMessageBox::NoIcon, QMessageBox::Critical, QMessageBox::Question,
                                       QMessageBox::Warning, QMessageBox::Information};

struct AnswerButton {
    QMessageBox::StandardButton button;
    Answer answer;
    // Every button has a key; the toolkit gives one to Yes and No alone.
    const char* text;
};

constexpr AnswerButton answerButtons[] = {{QMessageBox::Ok, Answer::Ok, "&OK"},
                                          {QMessageBox::Cancel, Answer::Cancel, "&Cancel"},
                                          {QMessageBox::Abort, Answer::Abort, "&Abort"},
                                          {QMessageBox::Retry, Answer::Retry, "&Retry"},
                                          {QMessageBox::Ignore, Answer::Ignore, "&Ignore"},
                                          {QMessageBox::Yes, Answer::Yes, "&Yes"},
                                          {QMessageBox::No, Answer::No, "&No"}};

Answer Ask(QMessageBox& box) {
    for (const AnswerButton& each : answerButtons) {
        if (QAbstractButton* shown = box.button(each.button)) {
            shown->setText(Translate(QString::fromLatin1(each.text)));
        }
    }
    const auto* chosen = std::ranges::find(answerButtons, box.exec(), &AnswerButton::button);
    return chosen == std::end(answerButtons) ? Answer::Ok : chosen->answer;
}

// A question has the ordinary pointer, also one that is asked in the middle of long work.
class QuestionPointer {
public:
    QuestionPointer() : busy_(QApplication::overrideCursor() != nullptr) {
        if (busy_) {
            QApplication::setOverrideCursor(Qt::ArrowCursor);
        }
    }
    ~QuestionPointer() {
        if (busy_) {
            QApplication::restoreOverrideCursor();
        }
    }
    QuestionPointer(const QuestionPointer&) = delete;
    QuestionPointer& operator=(const QuestionPointer&) = delete;

private:
    bool busy_;
};

bool MayReplace(const QString& path) {
    return QMessageBox::question(
               QApplication::activeWindow(), Translate(QStringLiteral("Save File As")),
               Translate(QStringLiteral("%1 already exists. Replace it?")).arg(QDir::toNativeSeparators(path))) ==
           QMessageBox::Yes;
}

} // namespace

QString NameFilters(const QString& filter) {
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString words = parts[i].section(u'(', 0, 0).trimmed();
        filters.append(QStringLiteral("%1 (%2)").arg(words, QString(parts[i + 1]).replace(u';', u' ')));
    }
    return filters.join(QStringLiteral(";;"));
}

Answer WindowDialogs::ShowMessage(const Message& message) {
    const QuestionPointer pointer;
    QMessageBox box(icons[static_cast<size_t>(message.icon)], message.title, message.text, QMessageBox::NoButton,
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    for (const ButtonRow& row : buttonRows) {
        if (row.buttons == message.buttons) {
            box.setStandardButtons(row.shown);
            if (row.escape != QMessageBox::NoButton) {
                box.setEscapeButton(row.escape);
            }
        }
    }
    // The box sizes itself by its text alone; this keeps a longer title whole.
    constexpr int frameButtons = 120;
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    grid->addItem(new QSpacerItem(box.fontMetrics().horizontalAdvance(message.title) + frameButtons, 0),
                  grid->rowCount(), 0, 1, grid->columnCount());
    return Ask(box);
}

std::optional<QString> WindowDialogs::AskText(const QString& prompt, const QString& title, const QString& initial) {
    const QuestionPointer pointer;
    bool entered = false;
    const QString text =
        QInputDialog::getText(QApplication::activeWindow(), title, prompt, QLineEdit::Normal, initial, &entered);
    return entered ? std::optional(text) : std::nullopt;
}

std::optional<SaveFileAnswer> WindowDialogs::AskSaveFile(const SaveFileRequest& request) {
    const QuestionPointer pointer;
    QFileDialog dialog(QApplication::activeWindow(), request.title, request.folder, NameFilters(request.filter));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    // The question about an existing file comes below, when the name has its ending.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    const QString ending = request.filter.right(4);
    while (dialog.exec() == QDialog::Accepted) {
        const QString path = dialog.selectedFiles().value(0);
        const QString written = path.endsWith(ending) ? path : path + ending;
        if (!QFileInfo::exists(written) || MayReplace(written)) {
            const QFileInfo file(path);
            return SaveFileAnswer{QDir::toNativeSeparators(file.absolutePath()), file.fileName()};
        }
    }
    return std::nullopt;
}

std::optional<FontChoice> WindowDialogs::AskFont(const FontChoice& initial) {
    const QuestionPointer pointer;
    bool chosen = false;
    const QFont font = QFontDialog::getFont(&chosen, ToFont(initial), QApplication::activeWindow());
    return chosen ? std::optional(ToFontChoice(font)) : std::nullopt;
}

QFont ToFont(const FontChoice& choice) {
    QFont font(choice.family);
    font.setPointSizeF(choice.points);
    font.setBold(choice.bold);
    font.setItalic(choice.italic);
    return font;
}

FontChoice ToFontChoice(const QFont& font) {
    return {font.family(), font.pointSizeF(), font.bold(), font.italic()};
}

void WindowEventLoop::ProcessPendingEvents() {
    // Asking the desktop costs more than the rows of a fast report.
    constexpr qint64 interval = 20;
    if (lastRound_.isValid() && lastRound_.elapsed() < interval) {
        return;
    }
    QApplication::processEvents();
    lastRound_.start();
}

void WindowEventLoop::SetPointer(Pointer pointer) {
    if (pointer == pointer_) {
        return;
    }
    pointer_ = pointer;
    if (pointer == Pointer::Hourglass) {
        QApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QApplication::restoreOverrideCursor();
    }
}

void WindowEventLoop::Beep() {
    QApplication::beep();
}

void WindowEventLoop::Wait(std::chrono::milliseconds duration) {
    QElapsedTimer timer;
    timer.start();
    constexpr int slice = 20;
    do {
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        const qint64 left = duration.count() - timer.elapsed();
        QThread::msleep(static_cast<unsigned long>(std::clamp<qint64>(left, 0, slice)));
    } while (timer.elapsed() < duration.count());
}

} // namespace velmora
