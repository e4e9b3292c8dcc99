// A network in a file.
#pragma once

#include "ZkModelsGlobal.h"

#include "backend/ZkOnnxModel.h"

#include <QString>

namespace zk::models {

struct ZKMODELS_EXPORT ModelFile
{
    QString path; // absolute
    engine::OnnxModelPtr model; // null: it cannot be used
    QString error; // then, a sentence for the user

    // Reads and checks it, which takes as long as the network takes for a frame. Any thread.
    static ModelFile read(const QString &path);
    // A network for anything else is an error, too.
    static ModelFile read(const QString &path, engine::EngineRole role);
};

} // namespace zk::models
