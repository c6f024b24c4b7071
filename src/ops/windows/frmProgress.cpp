#include "ops/windows/frmProgress.h"

#include "base/windows/Glyph.h"
#include "base/windows/Look.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace velmora {

namespace {

constexpr int iconSize = 32;
constexpr int textWidth = 420;

} // namespace

frmProgress::frmProgress()
    : QWidget(nullptr, Qt::Tool | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowStaysOnTopHint),
      Image1(new QLabel(this)), Label1(new QLabel(this)), pnlProgress(new QProgressBar(this)) {
    setObjectName(QStringLiteral("frmProgress"));
    setWindowTitle(QStringLiteral("Service Administration"));
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_QuitOnClose, false);
    Image1->setObjectName(QStringLiteral("Image1"));
    Image1->setPixmap(GlyphIcon(Glyph::Wait).pixmap(iconSize));
    Label1->setObjectName(QStringLiteral("Label1"));
    Label1->setTextFormat(Qt::PlainText);
    Label1->setWordWrap(true);
    Label1->setFixedWidth(textWidth);
    pnlProgress->setObjectName(QStringLiteral("pnlProgress"));
    pnlProgress->setRange(0, 100);
    pnlProgress->setTextVisible(false);
    pnlProgress->setAccessibleName(QStringLiteral("Progress"));

    auto* texts = new QVBoxLayout;
    texts->setSpacing(spacing::normal);
    texts->addStretch();
    texts->addWidget(Label1);
    texts->addWidget(pnlProgress);
    texts->addStretch();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(spacing::large, spacing::large, spacing::large, spacing::large);
    row->setSpacing(spacing::large);
    row->setSizeConstraint(QLayout::SetFixedSize);
    row->addWidget(Image1, 0, Qt::AlignTop);
    row->addLayout(texts);
    Form_Load();
}

void frmProgress::Form_Load() {
    pnlProgress->hide();
    const QRect area = screen()->availableGeometry();
    // In the upper part of the screen, where it covers neither the middle of the window behind it nor a question.
    move(area.left() + (area.width() - sizeHint().width()) / 2, area.top() + area.height() / 5);
}

void frmProgress::ShowStatus(const QString& text, std::optional<double> percent) {
    pnlProgress->setVisible(percent.has_value());
    if (percent) {
        pnlProgress->setValue(static_cast<int>(std::lround(std::clamp(*percent, 0.0, 100.0))));
    }
    if (text == Label1->text()) {
        if (isVisible()) {
            repaint();
        }
        return;
    }
    Label1->setText(text);
    // A path can be longer than a line and has no blank to break it at.
    const int most = std::max(textWidth, screen()->availableGeometry().width() / 2);
    Label1->setFixedWidth(std::clamp(Label1->minimumSizeHint().width(), textWidth, most));
    setAccessibleName(text);
    if (text.isEmpty()) {
        hide();
        return;
    }
    show();
    PaintNow();
}

void frmProgress::PaintNow() {
    // A window that was just shown can be painted only once the desktop has put it on the screen.
    constexpr int patience = 200;
    QElapsedTimer timer;
    timer.start();
    do {
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 10);
    } while (!windowHandle()->isExposed() && timer.elapsed() < patience);
    repaint();
}

void frmProgress::mousePressEvent(QMouseEvent*) {
    hide();
}

void WindowProgress::Show(const QString& text, std::optional<double> percent) {
    if (window_ == nullptr) {
        if (text.isEmpty()) {
            return;
        }
        window_ = std::make_unique<frmProgress>();
    }
    window_->ShowStatus(text, percent);
}

} // namespace velmora
