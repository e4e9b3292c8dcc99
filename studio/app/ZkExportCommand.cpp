#include "ZkExportCommand.h"

#include "ZkCutoutExport.h"
#include "ZkExportOptions.h"
#include "ZkRunCommand.h"

#include "project/ZkProject.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace zk::app {

namespace {

// One clip with the files that it goes to.
struct Item
{
    const datamodel::ProjectClip *clip;
    ExportSettings settings;
};

class ExportJob
{
public:
    ExportJob(const ExportOptions &options, ProgressReport *report)
        : m_options(options)
        , m_report(report)
    { }

    ExitCode run();

private:
    ExitCode fail(ExitCode code, const QString &message)
    {
        m_report->error(code, message);
        return code;
    }
    ExitCode open();
    ExitCode plan();
    ExitCode add(int index, int count);
    ExitCode refuseOverwriting(const QString &path);
    ExitCode write(int item);

    const ExportOptions &m_options;
    ProgressReport *m_report;
    datamodel::Project m_project;
    QVector<Item> m_items;
};

ExitCode ExportJob::run()
{
    ExitCode code = open();
    if (code == ExitCode::Success)
        code = plan();
    if (code == ExitCode::Success)
        m_report->beginStage(QStringLiteral("export"));
    for (int i = 0; i < m_items.size() && code == ExitCode::Success; ++i)
        code = write(i);
    if (code == ExitCode::Success)
        m_report->summary();
    return code;
}

ExitCode ExportJob::open()
{
    m_report->beginStage(QStringLiteral("open"));
    QString error;
    if (!m_project.open(m_options.project, &error))
        return fail(ExitCode::BadInput, error);
    if (m_project.clipCount() == 0)
        return fail(ExitCode::BadInput, QStringLiteral("the project has no clips"));
    if (m_options.clip > m_project.clipCount())
        return fail(ExitCode::Usage,
                    QStringLiteral("there is no clip %1, the project has %2")
                        .arg(m_options.clip)
                        .arg(m_project.clipCount()));
    return ExitCode::Success;
}

ExitCode ExportJob::plan()
{
    if (m_options.clip > 0)
        return add(m_options.clip - 1, 1);
    ExitCode code = ExitCode::Success;
    for (int i = 0; i < m_project.clipCount() && code == ExitCode::Success; ++i)
        code = add(i, m_project.clipCount());
    return code;
}

ExitCode ExportJob::add(int index, int count)
{
    const datamodel::ProjectClip *clip = m_project.clipAt(index);
    if (clip->isOffline())
        return fail(ExitCode::BadInput,
                    QStringLiteral("clip %1 has no pictures: %2")
                        .arg(index + 1)
                        .arg(m_project.findMedia(clip->mediaId())->problem));
    const ExportSettings &settings = m_options;
    Item item {clip, settings};
    item.settings.outputs.clear();
    QString error;
    const QString name = QFileInfo(clip->name()).completeBaseName();
    if (!m_options.outputsFor(index + 1, name, count, &item.settings.outputs, &error))
        return fail(ExitCode::Usage, error);
    for (const QString &path : qAsConst(item.settings.outputs)) {
        const ExitCode code = refuseOverwriting(path);
        if (code != ExitCode::Success)
            return code;
    }
    m_items.append(item);
    return ExitCode::Success;
}

ExitCode ExportJob::refuseOverwriting(const QString &path)
{
    QStringList inputs {m_project.path()};
    for (const datamodel::MediaEntry &entry : m_project.media())
        inputs.append(entry.info.path);
    for (const QString &input : qAsConst(inputs)) {
        if (QFileInfo(path).absoluteFilePath() == QFileInfo(input).absoluteFilePath())
            return fail(ExitCode::Usage,
                        QStringLiteral("the output %1 would overwrite a file of the project, "
                                       "choose another name")
                            .arg(path));
    }
    return ExitCode::Success;
}

ExitCode ExportJob::write(int item)
{
    Exporter::Hooks hooks;
    hooks.isCancelled = isInterrupted;
    hooks.progress = [this, item](qint64 done, qint64 count) {
        m_report->setPercent(int((item * count + done) * 100 / (count * m_items.size())));
        QCoreApplication::processEvents();
    };
    const datamodel::RenderSnapshot snapshot(*m_items.at(item).clip->timeline());
    return reportOutcome(Exporter(m_items.at(item).settings, hooks).run(snapshot), m_report);
}

} // namespace

ExitCode runExportCommand(const QStringList &arguments)
{
    return runCommand<ExportOptions, ExportJob>(arguments);
}

} // namespace zk::app
