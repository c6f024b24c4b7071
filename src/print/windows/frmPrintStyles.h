#pragma once

#include "base/Program.h"
#include "print/PrintStyles.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QStandardItemModel;
class QTableView;

namespace velmora::print {

// The editor of the print styles: by caption, how the value of a label and value line is drawn. Services and
// database outlive it.
class frmPrintStyles : public QDialog {
    Q_OBJECT

public:
    // Reads the rows; a failure is reported, and the editor then cannot save.
    frmPrintStyles(const Services& services, engine::Database& database, QWidget* parent = nullptr);

    void reject() override;

private:
    void LayOut(QLabel& explanation);
    void Connect();
    void Form_Load();
    void cmdAdd_Click();
    void cmdDelete_Click();
    void cmdOK_Click();
    void Rows_Changed();

    // As the grid shows them.
    StyleRows Rows() const;
    // Explains to the later rows of a caption that they are not used. Returns the captions that more than one row has.
    QStringList MarkDuplicates();

    // True when every row has what it needs; else says what is missing and goes there.
    bool RowsAreComplete();
    // Stores the rows, put together with what another user changed meanwhile. False when the editor must stay open.
    bool Save();
    // Puts both users' changes to `base` together. Asks whose rows count where both changed the same ones; none when
    // the editing goes on.
    std::optional<StyleRows> Settle(const StyleRows& base, const StyleRows& mine, const StyleRows& stored);
    Answer Ask(const QString& text, Buttons buttons, Icon icon);

    const Services& services_;
    engine::Database& database_;
    // The rows as they were read.
    StyleRows base_;
    QStandardItemModel* model_;
    QTableView* grdStyles_;
    QLabel* lblNotice_;
    QPushButton* cmdAdd;
    QPushButton* cmdDelete;
    QPushButton* cmdOK;
    QPushButton* cmdCancel;
};

} // namespace velmora::print
