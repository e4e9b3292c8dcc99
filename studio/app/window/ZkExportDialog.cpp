#include "ZkExportDialog.h"

#include "ZkExportForm.h"
#include "ZkFormat.h"
#include "ZkPreferences.h"
#include "ZkPrompts.h"

#include "ZkWidgets.h"

#include <QDesktopServices>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QUrl>

namespace zk::app {

namespace {

constexpr int standardWidth = 560; // widget pixels

} // namespace

ExportDialog::ExportDialog(datamodel::Project *project, QWidget *parent)
    : QDialog(parent)
    , m_form(new ExportForm(project, this))
    , m_summary(new QLabel(this))
{
    setObjectName(QStringLiteral("ExportDialog"));
    setWindowTitle(tr("Export"));
    m_summary->setObjectName(QStringLiteral("ExportDialog_Summary"));
    m_summary->setWordWrap(true);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(20, 18, 20, 16);
    column->setSpacing(14);
    column->addWidget(m_form);
    column->addWidget(m_summary);
    column->addWidget(createProgress());
    column->addStretch();
    column->addWidget(createButtons());
    connect(m_form, &ExportForm::changed, this, &ExportDialog::refresh);
    connect(&m_batch, &ExportBatch::progress, this, &ExportDialog::onProgress);
    connect(&m_batch, &ExportBatch::finished, this, &ExportDialog::onFinished);
    refresh();
    showRunning(false);
    resize(standardWidth, sizeHint().height());
}

ExportDialog::~ExportDialog() = default;

QWidget *ExportDialog::createProgress()
{
    auto *row = new QWidget(this);
    m_bar = new ZkProgressBar(row);
    m_bar->setObjectName(QStringLiteral("ExportDialog_Progress"));
    m_bar->setAccessibleName(tr("Progress"));
    m_status = new QLabel(row);
    m_status->setObjectName(QStringLiteral("ExportDialog_Status"));
    m_status->setWordWrap(true);
    m_status->setTextFormat(Qt::PlainText);
    auto *column = new QVBoxLayout(row);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_bar);
    column->addWidget(m_status);
    return row;
}

QWidget *ExportDialog::createButtons()
{
    auto *row = new QWidget(this);
    m_show = new QPushButton(tr("Show in Folder"), row);
    m_show->setObjectName(QStringLiteral("ExportDialog_Show"));
    m_export = new QPushButton(tr("&Export"), row);
    m_export->setObjectName(QStringLiteral("ExportDialog_Export"));
    m_export->setDefault(true);
    m_close = new QPushButton(row);
    m_close->setObjectName(QStringLiteral("ExportDialog_Close"));
    m_close->setAutoDefault(false);
    m_show->setAutoDefault(false);
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_show);
    layout->addStretch();
    layout->addWidget(m_close);
    layout->addWidget(m_export);
    connect(m_show, &QPushButton::clicked, this, &ExportDialog::showInFolder);
    connect(m_export, &QPushButton::clicked, this, &ExportDialog::start);
    connect(m_close, &QPushButton::clicked, this, &ExportDialog::reject);
    return row;
}

void ExportDialog::refresh()
{
    m_summary->setText(m_form->summary());
    m_export->setEnabled(m_form->isComplete());
}

bool ExportDialog::mayOverwrite(const QVector<ExportItem> &items)
{
    const QStringList existing = ExportForm::existing(items);
    return existing.isEmpty()
        || askUser(this,
                   tr("Replace what is there?"),
                   tr("This exists already:") + QLatin1String("\n\n")
                       + existing.join(QLatin1Char('\n')),
                   tr("Replace"));
}

void ExportDialog::start()
{
    if (m_batch.isRunning())
        return;
    const QVector<ExportItem> items = m_form->items();
    if (items.isEmpty() || !mayOverwrite(items))
        return;
    Preferences::rememberFolderOf(Preferences::ExportFolder, m_form->target());
    m_written.clear();
    showRunning(true);
    onProgress(0, -1);
    m_batch.start(items);
}

void ExportDialog::showRunning(bool running)
{
    m_form->setEnabled(!running);
    m_export->setVisible(!running);
    m_bar->setVisible(running);
    m_show->setVisible(!running && !m_written.isEmpty());
    m_close->setText(running ? tr("Cancel") : tr("Close"));
    m_close->setEnabled(true);
    if (running)
        m_close->setFocus();
}

void ExportDialog::onProgress(int percent, qint64 msLeft)
{
    m_bar->setValue(percent);
    const QString left = timeLeftText(msLeft);
    m_status->setText(left.isEmpty() ? QStringLiteral("%1 %").arg(percent)
                                     : QStringLiteral("%1 %  ·  %2").arg(percent).arg(left));
}

void ExportDialog::onFinished(const ExportOutcome &outcome)
{
    m_written = outcome.written;
    showRunning(false);
    switch (outcome.code) {
    case ExitCode::Success:
        m_status->setText(tr("%n clip(s) exported.", nullptr, m_written.size()));
        m_show->setFocus();
        break;
    case ExitCode::Interrupted:
        m_status->setText(tr("Cancelled. Nothing incomplete was left behind."));
        break;
    default:
        m_status->setText(outcome.message);
        warnUser(this, tr("The export failed"), outcome.message);
    }
}

void ExportDialog::reject()
{
    if (!m_batch.isRunning()) {
        QDialog::reject();
        return;
    }
    m_batch.cancel();
    m_close->setEnabled(false);
    m_status->setText(tr("Cancelling..."));
}

void ExportDialog::showInFolder()
{
    const QString folder = QFileInfo(m_written.value(0)).absolutePath();
    QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
}

} // namespace zk::app
