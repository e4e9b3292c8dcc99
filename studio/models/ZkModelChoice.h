// Which networks take the place of the engine's algorithms.
#pragma once

#include "ZkModelFile.h"

#include "backend/ZkOnnxBackends.h"

#include <QObject>
#include <QString>

#include <array>
#include <future>
#include <memory>

namespace zk::models {

// GUI thread only; what engine() returns may be used in any. Initially everything is built in.
class ZKMODELS_EXPORT ModelChoice : public QObject
{
    Q_OBJECT

public:
    explicit ModelChoice(QObject *parent = nullptr);
    // Waits for files that are being read.
    ~ModelChoice() override;

    // A file that was read, without an error; an empty one: built in.
    void choose(engine::EngineRole role, const ModelFile &file);
    // Reads it in a thread. An error shows in failed(), and that work is done by the built-in engine.
    void readLater(engine::EngineRole role, const QString &path);
    // Reads it and takes it for what it is for. False, with a sentence for the user and nothing changed,
    // when it does not fit or there is one for the same already.
    bool add(const QString &path, QString *error);

    QString path(engine::EngineRole role) const; // empty: built in
    // Waits when it is being read.
    const ModelFile &file(engine::EngineRole role);
    // What is chosen now; waits for what is being read. Never null.
    engine::EngineBackendsPtr engine();

Q_SIGNALS:
    // A network could not be read, or failed for the first time since engine() was called; the built-in
    // engine works instead. The notice is a sentence for the user. Never from inside a call.
    void failed(const QString &notice);

private:
    struct Listener;

    void finishReading(engine::EngineRole role);
    ModelFile &slot(engine::EngineRole role) { return m_files[size_t(role)]; }
    void tell(const QString &notice);

    std::array<ModelFile, engine::engineRoleCount> m_files;
    std::array<std::future<ModelFile>, engine::engineRoleCount> m_reading;
    engine::EngineBackendsPtr m_engine; // null: another choice was made
    const std::shared_ptr<Listener> m_listener; // outlives this object where networks are run
};

} // namespace zk::models
