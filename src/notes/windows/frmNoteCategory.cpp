#include "notes/windows/frmNoteCategory.h"

#include "notes/windows/BoundGrid.h"

#include <QLabel>
#include <QPushButton>
#include <QToolButton>

namespace velmora {

using namespace Qt::StringLiterals;

namespace {

const QString moduleTitle = u"Note Category Form"_s;

} // namespace

frmNoteCategory::frmNoteCategory(const NotesContext& context, QWidget* parent)
    : GridForm(context, moduleTitle, parent),
      Table1(new BoundGrid(context.program, BoundRows(context.database, CategoryColumns()), rules_,
                           {u"Table1"_s, u"Note Categories"_s, moduleTitle, u"Note Categories Grid"_s}, this)) {
    setObjectName(u"frmNoteCategory"_s);
    setWindowTitle(u"Note Categories"_s);
    auto* cmdClose = MakeButton(u"cmdClose"_s, u"&Close"_s);
    connect(cmdClose, &QPushButton::clicked, this, &frmNoteCategory::reject);

    LayOut(new QLabel(u"Note Categories are used to classify notes by responsibility"_s),
           {MakePrintPicture(), cmdClose});
    Form_Load(QSize(560, 420));
}

bool frmNoteCategory::IsEmpty() const {
    return Table1->View().Rows().Count() == 0;
}

bool frmNoteCategory::Form_Activate() {
    return Activate([this] { Table1->View().Refresh(u"NoteCategory"_s); });
}

void frmNoteCategory::Form_LostFocus() {
    Table1->View().UpdateRow();
}

} // namespace velmora
