#include "ZkShortcutsDialog.h"

#include "ZkErasingPage.h"
#include "ZkWindowActions.h"
#include "ZkWorkspacePage.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QMessageBox>
#include <QTableWidget>
#include <QVBoxLayout>

namespace zk::app {

ShortcutsDialog::ShortcutsDialog(const WindowActions &actions, QWidget *parent)
    : QDialog(parent)
    , m_table(new QTableWidget(0, 2, this))
{
    setObjectName(QStringLiteral("ShortcutsDialog"));
    setWindowTitle(tr("Keyboard Shortcuts"));
    m_table->setObjectName(QStringLiteral("ShortcutsDialog_Table"));
    m_table->setAccessibleName(windowTitle());
    m_table->setHorizontalHeaderLabels({tr("Command"), tr("Key")});
    m_table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_table->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->setColumnWidth(1, 160);
    m_table->verticalHeader()->hide();
    m_table->setShowGrid(false);
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionMode(QAbstractItemView::NoSelection);
    m_table->setTabKeyNavigation(false);
    addHeading(tr("Editor"));
    const QVector<WindowActions::Key> keys = actions.keys();
    for (const WindowActions::Key &key : keys)
        addRow(key.what, key.key);
    addHeading(tr("Smart Cutout"));
    const auto workspaceKeys = WorkspacePage::shortcuts();
    for (const auto &key : workspaceKeys)
        addRow(key.second, key.first);
    addHeading(tr("AI Erase"));
    const auto erasingKeys = ErasingPage::shortcuts();
    for (const auto &key : erasingKeys)
        addRow(key.second, key.first);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_table, 1);
    column->addWidget(buttons);
    resize(480, 600);
}

void ShortcutsDialog::addHeading(const QString &text)
{
    addRow(text, QString());
    const int row = m_table->rowCount() - 1;
    QTableWidgetItem *item = m_table->item(row, 0);
    QFont font = item->font();
    font.setBold(true);
    item->setFont(font);
    m_table->setSpan(row, 0, 1, 2);
}

void ShortcutsDialog::addRow(const QString &what, const QString &key)
{
    const int row = m_table->rowCount();
    m_table->insertRow(row);
    m_table->setItem(row, 0, new QTableWidgetItem(what));
    m_table->setItem(row, 1, new QTableWidgetItem(key));
}

void showAbout(QWidget *parent)
{
    QMessageBox box(parent);
    box.setObjectName(QStringLiteral("AboutBox"));
    box.setWindowTitle(ShortcutsDialog::tr("About ZkStudio"));
    box.setIconPixmap(parent->windowIcon().pixmap(64, 64));
    box.setText(ShortcutsDialog::tr("ZkStudio %1").arg(QCoreApplication::applicationVersion()));
    box.setInformativeText(
        ShortcutsDialog::tr("Cuts objects out of videos: paint over what to keep, let it be "
                            "tracked, give it a look, and export it with transparency."));
    box.exec();
}

} // namespace zk::app
