#pragma once

#include "ZkExportBatch.h"

#include <QDialog>

class QLabel;
class QProgressBar;
class QPushButton;

namespace zk::datamodel {
class Project;
}

namespace zk::app {

class ExportForm;

// Asks what to write and where, and writes it: the clips as they are when it starts, so the editor is free to
// go on meanwhile. Closing it while it writes cancels. The project is not owned and must outlive the dialog.
class ExportDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ExportDialog(datamodel::Project *project, QWidget *parent = nullptr);
    ~ExportDialog() override;

    bool isExporting() const { return m_batch.isRunning(); }
    void reject() override;

private:
    QWidget *createProgress();
    QWidget *createButtons();
    void refresh();
    void showRunning(bool running);
    bool mayOverwrite(const QVector<ExportItem> &items);
    void start();
    void onProgress(int percent, qint64 msLeft);
    void onFinished(const ExportOutcome &outcome);
    void showInFolder();

    ExportBatch m_batch;
    QStringList m_written;
    ExportForm *m_form;
    QLabel *m_summary;
    QProgressBar *m_bar = nullptr;
    QLabel *m_status = nullptr;
    QPushButton *m_export = nullptr;
    QPushButton *m_close = nullptr;
    QPushButton *m_show = nullptr;
};

} // namespace zk::app
