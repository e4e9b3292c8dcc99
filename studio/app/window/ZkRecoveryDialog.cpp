#include "ZkRecoveryDialog.h"

#include "ZkPrompts.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QLocale>
#include <QPushButton>
#include <QVBoxLayout>

namespace zk::app {

RecoveryDialog::RecoveryDialog(const QVector<datamodel::RecoverableProject> &projects,
                               QWidget *parent)
    : QDialog(parent)
    , m_projects(projects)
    , m_list(new QListWidget(this))
{
    setObjectName(QStringLiteral("RecoveryDialog"));
    setWindowTitle(tr("Recover Projects"));
    m_list->setObjectName(QStringLiteral("RecoveryDialog_List"));
    m_list->setAccessibleName(tr("Projects that can be recovered"));
    m_list->setAlternatingRowColors(false);
    for (const datamodel::RecoverableProject &project : projects)
        addRow(project);
    m_list->setCurrentRow(0);

    auto *text = new QLabel(tr("ZkStudio was ended before these projects were saved."), this);
    text->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(this);
    auto *recover = buttons->addButton(tr("&Recover"), QDialogButtonBox::AcceptRole);
    recover->setObjectName(QStringLiteral("RecoveryDialog_Recover"));
    recover->setDefault(true);
    auto *discard = buttons->addButton(tr("&Delete"), QDialogButtonBox::DestructiveRole);
    discard->setObjectName(QStringLiteral("RecoveryDialog_Delete"));
    buttons->addButton(tr("Not Now"), QDialogButtonBox::RejectRole);
    auto *column = new QVBoxLayout(this);
    column->addWidget(text);
    column->addWidget(m_list, 1);
    column->addWidget(buttons);
    resize(560, 320);

    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(discard, &QPushButton::clicked, this, &RecoveryDialog::discardChosen);
    connect(m_list, &QListWidget::itemActivated, this, &QDialog::accept);
}

void RecoveryDialog::addRow(const datamodel::RecoverableProject &project)
{
    const QString name =
        project.origin.isEmpty() ? tr("Untitled") : QFileInfo(project.origin).completeBaseName();
    const QString time = QLocale().toString(project.saved.toLocalTime(), QLocale::ShortFormat);
    QString text = tr("%1 – %2, %n clip(s)", nullptr, project.clipCount).arg(name, time);
    if (project.isOlderThanOrigin)
        text += QLatin1Char('\n') + tr("The project's own file is newer.");
    auto *item = new QListWidgetItem(text, m_list);
    item->setToolTip(project.origin);
}

datamodel::RecoverableProject RecoveryDialog::chosen() const
{
    return m_projects.value(m_list->currentRow());
}

void RecoveryDialog::discardChosen()
{
    const int row = m_list->currentRow();
    if (row < 0
        || !askUser(this,
                    tr("Delete this autosave?"),
                    tr("What was not saved of the project is lost then."),
                    tr("Delete")))
        return;
    Q_EMIT discarded(m_projects.at(row));
    m_projects.remove(row);
    delete m_list->takeItem(row);
    if (m_projects.isEmpty())
        reject();
}

} // namespace zk::app
