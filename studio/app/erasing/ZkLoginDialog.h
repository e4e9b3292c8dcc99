#pragma once

#include "widgets/ZkDialogs.h"

class QLineEdit;

namespace zk::app {

// Asks for a name to log in with. The account is one of this computer and has no password.
class LoginDialog : public ZkFramelessDialog
{
    Q_OBJECT

public:
    explicit LoginDialog(QWidget *parent = nullptr);

private:
    void logIn();

    QLineEdit *m_name;
    ZkPushButton *m_logIn;
};

} // namespace zk::app
