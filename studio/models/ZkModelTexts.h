// Sentences about networks, for the user.
#pragma once

#include "ZkModelsGlobal.h"

#include "backend/ZkModelProblem.h"

#include <QCoreApplication>

namespace zk::models {

class ZKMODELS_EXPORT ModelTexts
{
    Q_DECLARE_TR_FUNCTIONS(ModelTexts)

public:
    // "Segmentation", ...
    static QString role(engine::EngineRole role);

    static QString tooLarge(); // a reason for the following
    static QString cannotRead(const QString &path, const QString &reason);
    static QString wrongRole(const QString &path, engine::EngineRole is, engine::EngineRole wanted);
    static QString twice(const QString &path, engine::EngineRole role, const QString &otherPath);
    // What is wrong with the file, and what it takes to mend it.
    static QString problem(const QString &path, const engine::ModelProblem &problem);
    // It was not read when the program began, or failed when it was run.
    static QString builtInInstead(engine::EngineRole role, const QString &reason);

private:
    static QString reason(const engine::ModelProblem &problem);
};

} // namespace zk::models
