#include "ZkModelFile.h"

#include "ZkModelTexts.h"

#include <QFile>
#include <QFileInfo>

#include <limits>

namespace zk::models {

namespace {

ModelFile unreadable(const QString &path, const QString &reason)
{
    return {path, nullptr, ModelTexts::cannotRead(path, reason)};
}

} // namespace

ModelFile ModelFile::read(const QString &path)
{
    const QString absolute = QFileInfo(path).absoluteFilePath();
    QFile file(absolute);
    if (!file.open(QIODevice::ReadOnly))
        return unreadable(absolute, file.errorString());
    // A message of protocol buffers cannot be larger.
    if (file.size() > std::numeric_limits<int>::max())
        return unreadable(absolute, ModelTexts::tooLarge());
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return unreadable(absolute, file.errorString());
    engine::ModelProblem problem;
    const engine::OnnxModelPtr model =
        engine::OnnxModel::load(bytes.constData(), std::size_t(bytes.size()), &problem);
    return {absolute, model, model ? QString() : ModelTexts::problem(absolute, problem)};
}

ModelFile ModelFile::read(const QString &path, engine::EngineRole role)
{
    ModelFile file = read(path);
    if (!file.model || file.model->role() == role)
        return file;
    return {file.path, nullptr, ModelTexts::wrongRole(file.path, file.model->role(), role)};
}

} // namespace zk::models
