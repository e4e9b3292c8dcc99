#include "ZkExporter.h"

#include "ZkPreview.h"

#include <QCoreApplication>
#include <QDir>

#include <exception>
#include <system_error>

namespace zk::app {

namespace {

class Texts
{
    Q_DECLARE_TR_FUNCTIONS(Exporter)

public:
    static QString isNoPicture(const QString &path)
    {
        return tr("%1 is not a picture, choose a PNG or JPEG file")
            .arg(QDir::toNativeSeparators(path));
    }
    static QString cannotRead(qint64 frame, const QString &reason)
    {
        return tr("frame %1 cannot be read: %2").arg(frame).arg(reason);
    }
    static QString cannotWrite(const QString &path, const QString &reason)
    {
        return tr("%1: %2").arg(QDir::toNativeSeparators(path), reason);
    }
    static QString wasCancelled() { return tr("interrupted, nothing was written"); }
};

ExportOutcome failure(ExitCode code, const QString &message)
{
    return {code, message, {}};
}

QImage greyPicture(const QImage &matte)
{
    return matte.convertToFormat(QImage::Format_RGBA8888);
}

} // namespace

media::OutputSettings outputSettings(const datamodel::RenderSnapshot &snapshot,
                                     media::OutputFormat format)
{
    media::OutputSettings settings;
    settings.format = format;
    settings.size = snapshot.frameSize();
    settings.frameRateNum = snapshot.frameRateNum();
    settings.frameRateDen = snapshot.frameRateDen();
    settings.frameCount = snapshot.frameCount();
    // Sound is copied from the start of the file on: of a later stretch it would be the wrong one.
    if (snapshot.inFrame() == 0)
        settings.audioSourcePath = snapshot.mediaPath();
    return settings;
}

Exporter::Exporter(const ExportSettings &settings, const Hooks &hooks)
    : m_settings(settings)
    , m_hooks(hooks)
{ }

Exporter::~Exporter() = default;

ExportOutcome Exporter::run(const datamodel::RenderSnapshot &snapshot)
{
    ExportOutcome outcome = open(snapshot);
    const qint64 count = snapshot.frameCount();
    for (qint64 frame = 0; frame < count && outcome.code == ExitCode::Success; ++frame) {
        outcome = isCancelled() ? failure(ExitCode::Interrupted, Texts::wasCancelled())
                                : writeFrame(snapshot, frame);
        if (m_hooks.progress)
            m_hooks.progress(frame + 1, count);
    }
    if (outcome.code == ExitCode::Success)
        outcome = isCancelled() ? failure(ExitCode::Interrupted, Texts::wasCancelled()) : finish();
    m_outputs.clear(); // a writer that is not finished leaves nothing
    return outcome;
}

ExportOutcome Exporter::open(const datamodel::RenderSnapshot &snapshot)
{
    const QString &picture = m_settings.backgroundPicture;
    if (!picture.isEmpty() && !m_background.load(picture))
        return failure(ExitCode::BadInput, Texts::isNoPicture(picture));
    for (const QString &path : m_settings.outputs) {
        QString error;
        media::OutputFormat format;
        if (!media::formatFor(path, &format, &error))
            return failure(ExitCode::BadOutput, error);
        Output output {path,
                       media::supportsAlpha(format),
                       media::MediaWriter::create(path, outputSettings(snapshot, format), &error)};
        if (!output.writer)
            return failure(ExitCode::BadOutput, error);
        m_outputs.push_back(std::move(output));
    }
    return {};
}

ExportOutcome Exporter::writeFrame(const datamodel::RenderSnapshot &snapshot, qint64 index)
{
    const bool needsCutout = !m_settings.matteOnly || m_hooks.wantsCutout;
    Frame frame;
    frame.index = index;
    frame.cutout = needsCutout ? m_renderer.cutout(snapshot, index) : QImage();
    frame.matte = m_renderer.matte(snapshot, index);
    if (frame.matte.isNull() || (needsCutout && frame.cutout.isNull()))
        return failure(ExitCode::BadInput, Texts::cannotRead(index, m_renderer.errorString()));
    for (const Output &output : m_outputs) {
        QString error;
        if (!output.writer->write(pictureFor(output, frame), &error))
            return failure(ExitCode::BadOutput, Texts::cannotWrite(output.path, error));
    }
    return m_hooks.frame ? m_hooks.frame(frame, m_renderer) : ExportOutcome();
}

QImage Exporter::pictureFor(const Output &output, const Frame &frame) const
{
    if (m_settings.matteOnly)
        return greyPicture(frame.matte);
    if (output.hasAlpha)
        return frame.cutout;
    if (!m_background.isNull())
        return effects::compositeOver(frame.cutout, m_background);
    const QColor colour = m_settings.backgroundColour;
    return effects::compositeOver(frame.cutout, colour.isValid() ? colour : QColor(Qt::black));
}

ExportOutcome Exporter::finish()
{
    ExportOutcome outcome;
    for (const Output &output : m_outputs) {
        QString error;
        if (!output.writer->finish(&error)) {
            outcome.code = ExitCode::BadOutput;
            outcome.message = Texts::cannotWrite(output.path, error);
            return outcome;
        }
        outcome.written.append(output.path);
    }
    return outcome;
}

ExportTask::ExportTask(QObject *parent)
    : QObject(parent)
{ }

ExportTask::~ExportTask()
{
    cancel();
    if (m_worker.joinable())
        m_worker.join();
}

bool ExportTask::start(const datamodel::RenderSnapshot &snapshot, const ExportSettings &settings)
{
    if (m_isRunning)
        return false;
    m_isRunning = true;
    m_isCancelled = false;
    m_percent = -1;
    m_clock.start();
    const auto run = [=] {
        const ExportOutcome outcome = work(snapshot, settings);
        QMetaObject::invokeMethod(
            this, [=] { conclude(outcome); }, Qt::QueuedConnection);
    };
    try {
        m_worker = std::thread(run);
    } catch (const std::system_error &exception) { // no more threads
        const ExportOutcome outcome =
            failure(ExitCode::InternalError, QString::fromLocal8Bit(exception.what()));
        QMetaObject::invokeMethod(
            this, [=] { conclude(outcome); }, Qt::QueuedConnection);
    }
    return true;
}

ExportOutcome ExportTask::work(const datamodel::RenderSnapshot &snapshot,
                               const ExportSettings &settings)
{
    Exporter::Hooks hooks;
    hooks.isCancelled = [this] { return m_isCancelled.load(); };
    hooks.progress = [this](qint64 done, qint64 count) { report(done, count); };
    try {
        return Exporter(settings, hooks).run(snapshot);
    } catch (const std::exception &exception) { // out of memory, above all
        return failure(ExitCode::InternalError, QString::fromLocal8Bit(exception.what()));
    }
}

void ExportTask::report(qint64 done, qint64 count)
{
    const int percent = int(done * 100 / count);
    if (percent == m_percent)
        return;
    m_percent = percent;
    const qint64 msLeft = m_clock.elapsed() * (count - done) / done;
    QMetaObject::invokeMethod(
        this, [=] { Q_EMIT progress(percent, msLeft); }, Qt::QueuedConnection);
}

void ExportTask::conclude(const ExportOutcome &outcome)
{
    if (m_worker.joinable())
        m_worker.join();
    m_isRunning = false;
    Q_EMIT finished(outcome);
}

} // namespace zk::app
