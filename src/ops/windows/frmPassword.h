#pragma once

#include "ops/SmtpMail.h"

#include <QDialog>

class QCheckBox;
class QLineEdit;

namespace velmora {

// Asks for the password of the mail server's user.
class frmPassword : public QDialog {
    Q_OBJECT

public:
    // `refused`: the server did not take the last one.
    frmPassword(const mail::SmtpServer& server, bool refused, QWidget* parent = nullptr);

    PasswordAnswer Result() const;

private:
    QLineEdit* txtPassword;
    QCheckBox* chkRemember;
};

} // namespace velmora
