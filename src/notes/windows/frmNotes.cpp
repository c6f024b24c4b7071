#include "notes/windows/frmNotes.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "base/windows/Look.h"
#include "notes/NoteCategories.h"
#include "notes/StandardNotes.h"
#include "notes/windows/BoundGrid.h"
#include "notes/windows/frmNoteCategory.h"
#include "notes/windows/frmSelectStdNotes.h"
#include "platform/UserName.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

const QString moduleTitle = u"Notes Form"_s;

} // namespace

frmNotes::frmNotes(const NotesContext& context, qint32 reservationId, const QString& userName, QWidget* parent)
    : GridForm(context, moduleTitle, parent), ReservationID(reservationId),
      rules_(context.program.services().clock, userName),
      TDBGrid1(new BoundGrid(
          context.program, BoundRows(context.database, NoteColumns(), {{"Reservation", Value(qint64{reservationId})}}),
          rules_, {u"TDBGrid1"_s, u"Notes"_s, moduleTitle, u"Notes Grid"_s}, this)) {
    setObjectName(u"frmNotes"_s);
    setWindowTitle(u"Notes"_s);
    LayOut();
    Form_Load(QSize(1240, 560));
}

void frmNotes::LayOut() {
    auto* cmdAssetStdNotes = MakeButton(u"cmdAssetStdNotes"_s, u"&Asset Standards"_s);
    auto* cmdEventStdNotes = MakeButton(u"cmdEventStdNotes"_s, u"&Event Standards"_s);
    auto* Command1 = MakeButton(u"Command1"_s, u"Note Cate&gories"_s);
    auto* cmdClose = MakeButton(u"cmdClose"_s, u"&Close"_s);
    connect(cmdAssetStdNotes, &QPushButton::clicked, this, &frmNotes::cmdAssetStdNotes_Click);
    connect(cmdEventStdNotes, &QPushButton::clicked, this, &frmNotes::cmdEventStdNotes_Click);
    connect(Command1, &QPushButton::clicked, this, &frmNotes::Command1_Click);
    connect(cmdClose, &QPushButton::clicked, this, &frmNotes::reject);

    auto* standards = new QGroupBox(u"Add Standard Notes"_s);
    auto* inFrame = new QHBoxLayout(standards);
    inFrame->setSpacing(spacing::normal);
    inFrame->setContentsMargins(spacing::normal, spacing::normal, spacing::normal, spacing::normal);
    inFrame->addWidget(cmdAssetStdNotes);
    inFrame->addWidget(cmdEventStdNotes);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(spacing::normal);
    buttons->setContentsMargins(spacing::large, spacing::normal, spacing::large, 0);
    buttons->addWidget(standards);
    buttons->addSpacing(spacing::normal);
    // On one line with the buttons inside the frame.
    auto* others = new QHBoxLayout;
    others->setContentsMargins(0, 0, 0, spacing::normal + 3);
    for (QWidget* each : {static_cast<QWidget*>(Command1), static_cast<QWidget*>(MakePrintPicture())}) {
        others->addWidget(each, 0, Qt::AlignBottom);
    }
    others->addStretch();
    others->addWidget(cmdClose, 0, Qt::AlignBottom);
    buttons->addLayout(others, 1);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing::normal);
    column->addLayout(buttons);
    column->addWidget(TDBGrid1, 1);
}

bool frmNotes::Form_Activate() {
    QStringList categories;
    const bool read = Activate([&] {
        TDBGrid1->View().Refresh(NotesOf(ReservationID));
        categories = CategoryNames(Context().database);
    });
    TDBGrid1->View().SetChoices(categories);
    // What is typed is not given up for it.
    const bool refused = categories.isEmpty() && !TDBGrid1->View().HasPendingEdit();
    if (read && refused) {
        RefuseWithoutCategories();
    }
    return read && !refused;
}

void frmNotes::RefuseWithoutCategories() {
    lackedCategories_ = true;
    Context().program.services().dialogs.ShowMessage(
        {Translate(u"There are no Note Categories Defined.  Define Note Categories before creating any Notes."_s),
         Context().program.Title(), Buttons::Ok, Icon::None});
    done(Rejected);
}

void frmNotes::Form_LostFocus() {
    if (TDBGrid1->View().UpdateRow()) {
        TDBGrid1->View().CloseRecords();
        done(Rejected);
    } else {
        raise();
        activateWindow();
    }
}

void frmNotes::SelectStandardNotes(const QString& mode) {
    if (!TDBGrid1->View().UpdateRow()) {
        return;
    }
    frmSelectStdNotes selection(Context(), ReservationID, this);
    selection.StdNoteMode = mode;
    Steps steps = MakeSteps(u"Add Standard Notes"_s);
    if (!steps.Step(u"Reading Reservation"_s,
                    [&] { selection.StdNoteKey = StandardNoteKeyOf(Context().database, ReservationID, mode); })) {
        return;
    }
    selection.ShowModal();
    steps.Step(u"Reading Notes"_s, [&] { TDBGrid1->View().Requery(); });
    TDBGrid1->setFocus();
}

void frmNotes::Command1_Click() {
    if (TDBGrid1->View().UpdateRow()) {
        frmNoteCategory(Context(), this).ShowModal();
        Form_Activate();
        TDBGrid1->setFocus();
    }
}

void OpenNotes(const NotesContext& context, qint32 reservation, QWidget* owner) {
    for (;;) {
        frmNotes notes(context, reservation, UserName(), owner);
        notes.ShowModal();
        if (!notes.LackedCategories()) {
            return;
        }
        // Where there are none, this is the way to the first.
        frmNoteCategory categories(context, owner);
        categories.ShowModal();
        if (categories.IsEmpty()) {
            return;
        }
    }
}

} // namespace velmora
