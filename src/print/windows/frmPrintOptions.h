#pragma once

#include "base/Program.h"
#include "print/PrintStyles.h"

#include <QDialog>

#include <array>

class QPushButton;
class QRadioButton;

namespace velmora::print {

// The choice of the leader style of label and value lines, kept for each user. Services and database outlive it.
class frmPrintOptions : public QDialog {
    Q_OBJECT

public:
    frmPrintOptions(const Services& services, engine::Database& database, QWidget* parent = nullptr);

private:
    void Form_Load();
    void optLeader_Click(qint16 index);
    void cmdOK_Click();
    void cmdCancel_Click();
    void Command1_Click();

    QWidget* MakeLeaderFrame();
    QWidget* MakeStylesFrame();

    const Services& services_;
    engine::Database& database_;
    qint16 selectedStyle_ = 0;
    std::array<QRadioButton*, 3> optLeader;
    QPushButton* Command1;
    QPushButton* cmdOK;
    QPushButton* cmdCancel;
};

} // namespace velmora::print
