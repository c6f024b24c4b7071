#include "notes/windows/frmSelectStdNotes.h"

#include "base/Steps.h"
#include "base/Translate.h"
#include "notes/StandardNotes.h"
#include "notes/windows/BoundGrid.h"

#include <QLabel>
#include <QPushButton>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

const QString moduleTitle = u"Select Standard Notes"_s;

} // namespace

frmSelectStdNotes::frmSelectStdNotes(const NotesContext& context, qint32 reservationId, QWidget* parent)
    : GridForm(context, moduleTitle, parent), reservation_(reservationId), Label1(new QLabel),
      Table1(new BoundGrid(context.program, BoundRows(context.database, StandardNoteColumns()), rules_,
                           {u"Table1"_s, u"Standard Notes"_s, moduleTitle, u"Standard Notes Grid"_s}, this)) {
    setObjectName(u"frmSelectStdNotes"_s);
    setWindowTitle(u"Select Standard Notes"_s);
    auto* cmdOK = MakeButton(u"cmdOK"_s, u"OK"_s);
    auto* cmdCancel = MakeButton(u"cmdCancel"_s, u"Cancel"_s);
    cmdOK->setDefault(true);
    connect(cmdOK, &QPushButton::clicked, this, &frmSelectStdNotes::cmdOK_Click);
    connect(cmdCancel, &QPushButton::clicked, this, &frmSelectStdNotes::cmdCancel_Click);
    LayOut(Label1, {cmdOK, cmdCancel});
    Form_Load(QSize(860, 440));
}

void frmSelectStdNotes::Explain() {
    Label1->setText(Translate(Table1->View().Rows().Count() > 0
                                  ? u"Select the notes to add. Hold the Ctrl key to select several; they are added in "
                                    "the order in which they are selected."_s
                              : StdNoteMode == u"2" ? u"There are no standard notes for this event type."_s
                                                    : u"There are no standard notes for this asset."_s));
}

bool frmSelectStdNotes::Form_Activate() {
    return Activate([this] {
        if (const auto list = FindStandardNoteList(StdNoteMode, StdNoteKey)) {
            setWindowTitle(Translate(list->title));
            Table1->View().Open(list->source);
            Explain();
        }
    });
}

QStringList frmSelectStdNotes::ChosenNames() {
    QStringList names;
    for (const int row : Table1->View().SelectedRows()) {
        names.append(Table1->View().Rows().Stored(row, Table1->View().Rows().ColumnOf("Name")).ToText());
    }
    return names;
}

void frmSelectStdNotes::AddChosen() {
    const BusyPointer busy(Context().program.services().eventLoop);
    const QStringList names = ChosenNames();
    engine::Transaction together(Context().database);
    for (const QString& name : names) {
        AddStandardNote(Context().database, reservation_, name);
    }
    together.Commit();
}

void frmSelectStdNotes::cmdOK_Click() {
    if (MakeSteps(u"Add Standard Notes"_s).Step(u"Adding Notes"_s, [this] { AddChosen(); })) {
        Table1->View().ClearSelection();
        accept();
    }
}

void frmSelectStdNotes::cmdCancel_Click() {
    Table1->View().ClearSelection();
    // Nothing is open that the form would ask about.
    QDialog::reject(); // NOLINT(bugprone-parent-virtual-call)
}

} // namespace velmora
