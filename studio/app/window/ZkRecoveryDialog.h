#pragma once

#include "project/ZkAutosave.h"

#include <QDialog>
#include <QVector>

class QListWidget;
class QPushButton;

namespace zk::app {

// Offers projects that were open when an editor crashed. Accepted: chosen() is to be recovered; what is left
// is offered again at the next start.
class RecoveryDialog : public QDialog
{
    Q_OBJECT

public:
    RecoveryDialog(const QVector<datamodel::RecoverableProject> &projects, QWidget *parent);

    datamodel::RecoverableProject chosen() const;

Q_SIGNALS:
    void discarded(const zk::datamodel::RecoverableProject &project);

private:
    void addRow(const datamodel::RecoverableProject &project);
    void discardChosen();

    QVector<datamodel::RecoverableProject> m_projects; // the list's rows
    QListWidget *m_list;
};

} // namespace zk::app
