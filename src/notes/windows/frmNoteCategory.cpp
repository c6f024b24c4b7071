#include "notes/windows/frmNoteCategory.h"

#include "base/windows/Look.h"
#include "notes/windows/BoundGrid.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

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
    auto* Label1 = new QLabel(u"Note Categories are used to classify notes by responsibility"_s);
    Label1->setObjectName(u"Label1"_s);
    Label1->setWordWrap(true);
    auto* cmdClose = MakeButton(u"cmdClose"_s, u"&Close"_s);
    connect(cmdClose, &QPushButton::clicked, this, &frmNoteCategory::reject);

    auto* head = new QHBoxLayout;
    head->setContentsMargins(spacing::large, spacing::large, spacing::large, 0);
    head->setSpacing(spacing::normal);
    head->addWidget(Label1, 1);
    head->addWidget(MakePrintPicture());
    head->addWidget(cmdClose);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing::normal);
    column->addLayout(head);
    column->addWidget(Table1, 1);
    Form_Load(QSize(560, 420));
}

bool frmNoteCategory::IsEmpty() const {
    return Table1->View().Rows().Count() == 0;
}

bool frmNoteCategory::Form_Activate() {
    return Activate([this] {
        if (Table1->View().Rows().IsOpen() && !Table1->View().HasPendingEdit()) {
            Table1->View().Requery();
        } else if (!Table1->View().HasPendingEdit()) {
            Table1->View().Open(u"NoteCategory"_s);
        }
    });
}

void frmNoteCategory::Form_LostFocus() {
    Table1->View().UpdateRow();
}

} // namespace velmora
