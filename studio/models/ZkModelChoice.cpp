#include "ZkModelChoice.h"

#include "ZkModelTexts.h"

#include <QFileInfo>
#include <QLoggingCategory>

#include <mutex>

Q_LOGGING_CATEGORY(lcModels, "zk.models")

namespace zk::models {

using engine::EngineRole;

struct ModelChoice::Listener
{
    std::mutex mutex;
    ModelChoice *choice = nullptr; // null: it is gone
};

ModelChoice::ModelChoice(QObject *parent)
    : QObject(parent)
    , m_listener(std::make_shared<Listener>())
{
    m_listener->choice = this;
}

ModelChoice::~ModelChoice()
{
    const std::lock_guard<std::mutex> lock(m_listener->mutex);
    m_listener->choice = nullptr;
}

void ModelChoice::choose(EngineRole role, const ModelFile &chosen)
{
    m_reading[size_t(role)] = {};
    slot(role) = chosen;
    m_engine.reset();
}

void ModelChoice::readLater(EngineRole role, const QString &path)
{
    choose(role, {QFileInfo(path).absoluteFilePath(), nullptr, {}});
    m_reading[size_t(role)] =
        std::async(std::launch::async, [path, role] { return ModelFile::read(path, role); });
}

bool ModelChoice::add(const QString &path, QString *error)
{
    const ModelFile added = ModelFile::read(path);
    *error = added.error;
    if (!added.model)
        return false;
    const EngineRole role = added.model->role();
    if (!slot(role).path.isEmpty()) {
        *error = ModelTexts::twice(added.path, role, slot(role).path);
        return false;
    }
    choose(role, added);
    return true;
}

QString ModelChoice::path(EngineRole role) const
{
    return m_files[size_t(role)].path;
}

const ModelFile &ModelChoice::file(EngineRole role)
{
    finishReading(role);
    return slot(role);
}

void ModelChoice::finishReading(EngineRole role)
{
    if (!m_reading[size_t(role)].valid())
        return;
    slot(role) = m_reading[size_t(role)].get();
    if (!slot(role).model)
        tell(ModelTexts::builtInInstead(role, slot(role).error));
}

// Any thread.
void ModelChoice::tell(const QString &notice)
{
    qCInfo(lcModels).noquote() << notice;
    QMetaObject::invokeMethod(
        this, [this, notice] { Q_EMIT failed(notice); }, Qt::QueuedConnection);
}

engine::EngineBackendsPtr ModelChoice::engine()
{
    if (m_engine)
        return m_engine;
    const engine::OnnxModels models {file(EngineRole::Segmentation).model,
                                     file(EngineRole::Tracking).model,
                                     file(EngineRole::Inpainting).model};
    std::array<QString, engine::engineRoleCount> paths;
    for (const EngineRole role : engine::engineRoles)
        paths[size_t(role)] = path(role);
    m_engine = engine::onnxBackends(
        models, [listener = m_listener, paths](const engine::BackendFailure &failure) {
            const QString reason =
                ModelTexts::problem(paths[size_t(failure.role)], failure.problem);
            const std::lock_guard<std::mutex> lock(listener->mutex);
            if (listener->choice)
                listener->choice->tell(ModelTexts::builtInInstead(failure.role, reason));
        });
    return m_engine;
}

} // namespace zk::models
