#include "print/windows/frmPrintPreview.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "base/windows/CenterForm.h"
#include "base/windows/Look.h"
#include "platform/pages/PdfFile.h"
#include "print/ReportFile.h"
#include "print/windows/PageView.h"
#include "print/windows/PreviewBars.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QScopedValueRollback>
#include <QScreen>
#include <QToolBar>
#include <QVBoxLayout>

namespace velmora::print {

frmPrintPreview::frmPrintPreview(const Services& services, PagePrinter& printer, PreviewReport report)
    : services_(services), printer_(printer), document_(std::move(report.document)), orientation_(report.orientation),
      Toolbar1(new QToolBar), Picture1(new QLabel), lblNotice_(new QLabel), lblZoom_(new QLabel),
      picPage(new PageView(document_)), findBar_(new FindBar(document_, this)),
      goToBar_(new GoToBar(PageCount(), this)), menu_(new QMenu(this)) {
    setObjectName(QStringLiteral("frmPrintPreview"));
    setWindowTitle(Translate(QStringLiteral("Print Preview")));
    Picture1->setObjectName(QStringLiteral("Picture1"));
    lblNotice_->setObjectName(QStringLiteral("lblNotice"));
    lblZoom_->setObjectName(QStringLiteral("lblZoom"));
    AddButtons();
    lblNotice_->setWordWrap(true);

    auto* band = new QHBoxLayout;
    band->setContentsMargins(spacing::normal, spacing::small, spacing::large, spacing::small);
    band->setSpacing(spacing::large);
    band->addWidget(Toolbar1);
    band->addWidget(Picture1);
    band->addWidget(lblNotice_, 1);
    band->addWidget(lblZoom_);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(band);
    column->addWidget(picPage, 1);
    column->addWidget(findBar_);
    column->addWidget(goToBar_);

    connect(picPage, &PageView::PageClicked, this, &frmPrintPreview::picPage_Click);
    connect(picPage, &PageView::LeftPage, this, &frmPrintPreview::PageView_LeftPage);
    connect(picPage, &PageView::ZoomChanged, this, &frmPrintPreview::ShowZoom);
    connect(findBar_, &FindBar::Found, this, &frmPrintPreview::FindBar_Found);
    connect(findBar_, &FindBar::Closed, this, [this] {
        picPage->Mark(nullptr, -1);
        picPage->setFocus();
    });
    connect(goToBar_, &GoToBar::PageChosen, this, &frmPrintPreview::GoToPage);
    connect(goToBar_, &GoToBar::Closed, picPage, qOverload<>(&QWidget::setFocus));
    AddCommands();
    Form_Load();
    lblNotice_->setText(report.notice);
    ShowZoom();
    ShowPage();
    picPage->setFocus();
}

frmPrintPreview::~frmPrintPreview() = default;

void frmPrintPreview::Form_Load() {
    const QSize screen = this->screen()->availableSize();
    resize(screen.width(), screen.height() * 4 / 5);
    CenterForm(*this);
}

void frmPrintPreview::Form_Activate() {
    currentPage_ = 1;
    ShowPage();
}

bool frmPrintPreview::event(QEvent* event) {
    if (event->type() == QEvent::WindowDeactivate) {
        leftForQuestion_ = openQuestions_ > 0;
    } else if (event->type() == QEvent::WindowActivate && !std::exchange(leftForQuestion_, false)) {
        Form_Activate();
    }
    return QWidget::event(event);
}

void frmPrintPreview::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    picPage->ScrollToCorner();
}

void frmPrintPreview::ShowPage() {
    const QString place = Translate(QStringLiteral("Page ")) + QString::number(currentPage_) +
                          Translate(QStringLiteral(" of ")) + QString::number(PageCount());
    Picture1->setText(place);
    picPage->setAccessibleName(place);
    for (QAction* action : Toolbar1->actions()) {
        const QString key = action->objectName();
        const bool leadsBack = key == u"First" || key == u"Previous";
        const bool leadsOn = key == u"Next" || key == u"Last";
        const bool isAtEnd = (leadsBack && currentPage_ == 1) || (leadsOn && currentPage_ == PageCount());
        action->setEnabled(!isAtEnd);
    }
    picPage->ShowPage(currentPage_ - 1);
}

void frmPrintPreview::Toolbar1_ButtonClick(const QString& key) {
    const BusyPointer busy(services_.eventLoop);
    if (key == u"First" && currentPage_ >= 2) {
        currentPage_ = 1;
    } else if (key == u"Previous" && currentPage_ >= 2) {
        --currentPage_;
    } else if (key == u"Next" && currentPage_ < PageCount()) {
        ++currentPage_;
    } else if (key == u"Last" && currentPage_ < PageCount()) {
        currentPage_ = PageCount();
    } else if (key == u"PrintPage") {
        Print(QStringLiteral("Print the Current Page"), currentPage_ - 1, 1);
    } else if (key == u"Print") {
        Print(QStringLiteral("Print All Pages"), 0, PageCount());
    }
    ShowPage();
}

void frmPrintPreview::Print(const QString& task, int first, int count) {
    const QScopedValueRollback question(openQuestions_, openQuestions_ + 1);
    Steps steps(services_.errors, QStringLiteral("Printing"), QStringLiteral("Print Preview"));
    bool printed = false;
    steps.Step(task, [&] {
        const auto begin = document_.pages.begin() + first;
        const pages::Document chosen{document_.name, document_.fonts, {begin, begin + count}};
        printed = printer_.Print(pages::OnSheets(chosen, printer_.Paper(orientation_)));
    });
    if (printed) {
        lblNotice_->setText(count == 1 ? Translate(QStringLiteral("Page %1 went to the printer")).arg(first + 1)
                                       : Translate(QStringLiteral("%1 pages went to the printer")).arg(count));
    }
}

void frmPrintPreview::picPage_Click(int index) {
    const QScopedValueRollback question(openQuestions_, openQuestions_ + 1);
    services_.dialogs.ShowMessage(
        {QString::number(index) + Translate(QStringLiteral(" Clicked")), CurrentProgram().Title()});
}

void frmPrintPreview::GoToPage(int page) {
    currentPage_ = static_cast<qint16>(std::clamp<int>(page, 1, PageCount()));
    ShowPage();
}

void frmPrintPreview::PageView_LeftPage(int direction) {
    const int page = currentPage_ + direction;
    if (page < 1 || page > PageCount()) {
        return;
    }
    GoToPage(page);
    if (direction < 0) {
        picPage->ShowBottom();
    }
}

void frmPrintPreview::FindBar_Found() {
    if (findBar_->Current() >= 0) {
        GoToPage(findBar_->Hits()[static_cast<size_t>(findBar_->Current())].page + 1);
    }
    picPage->Mark(&findBar_->Hits(), findBar_->Current());
    picPage->RevealCurrentHit();
}

void frmPrintPreview::OpenFind() {
    goToBar_->hide();
    findBar_->Open(currentPage_ - 1);
}

void frmPrintPreview::OpenGoTo() {
    findBar_->Close();
    goToBar_->Open(currentPage_);
}

void frmPrintPreview::CopyText() {
    QGuiApplication::clipboard()->setText(document_.pages[static_cast<size_t>(currentPage_ - 1)].PlainText());
    lblNotice_->setText(Translate(QStringLiteral("The text of page %1 was copied")).arg(currentPage_));
}

void frmPrintPreview::SavePdf() {
    const QScopedValueRollback question(openQuestions_, openQuestions_ + 1);
    const auto path = AskReportPath(services_.dialogs, ReportFileKind::Pdf);
    if (!path) {
        return;
    }
    const BusyPointer busy(services_.eventLoop);
    Steps steps(services_.errors, QStringLiteral("Printing"), QStringLiteral("Print Preview"));
    if (steps.Step(QStringLiteral("Save as PDF"), [&] { pages::WritePdf(document_, *path); })) {
        lblNotice_->setText(Translate(QStringLiteral("Saved as %1")).arg(*path));
    }
}

void frmPrintPreview::ShowZoom() {
    lblZoom_->setText(QStringLiteral("%1 %").arg(std::lround(picPage->Zoom() * 100)));
}

void frmPrintPreview::contextMenuEvent(QContextMenuEvent* event) {
    menu_->popup(event->globalPos());
}

void WindowPreviews::Open(PreviewReport report) {
    auto* window = new frmPrintPreview(services_, printer_, std::move(report));
    window->setAttribute(Qt::WA_DeleteOnClose);
    window->show();
}

} // namespace velmora::print
