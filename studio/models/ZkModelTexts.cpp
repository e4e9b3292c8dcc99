#include "ZkModelTexts.h"

#include <QDir>

namespace zk::models {

using engine::EngineRole;
using engine::ModelProblem;

namespace {

// What comes from the file may be anything, and of any length.
QString shown(const std::string &text)
{
    constexpr int longest = 200; // characters
    const QString all = QString::fromUtf8(text.data(), int(text.size())).simplified();
    return all.size() <= longest ? all : all.left(longest) + QStringLiteral("...");
}

} // namespace

QString ModelTexts::role(EngineRole role)
{
    switch (role) {
    case EngineRole::Segmentation:
        return tr("Segmentation");
    case EngineRole::Tracking:
        return tr("Tracking");
    case EngineRole::Inpainting:
        break;
    }
    return tr("Inpainting");
}

QString ModelTexts::tooLarge()
{
    return tr("it is larger than 2 GB");
}

QString ModelTexts::cannotRead(const QString &path, const QString &reason)
{
    return tr("%1 cannot be read: %2.").arg(QDir::toNativeSeparators(path), reason);
}

QString ModelTexts::wrongRole(const QString &path, EngineRole is, EngineRole wanted)
{
    return tr("%1 is a network for another purpose (%2); choose one for this (%3).")
        .arg(QDir::toNativeSeparators(path), role(is), role(wanted));
}

QString ModelTexts::twice(const QString &path, EngineRole role, const QString &otherPath)
{
    return tr("%1 and %2 are networks for the same purpose (%3); give one of them.")
        .arg(QDir::toNativeSeparators(otherPath),
             QDir::toNativeSeparators(path),
             ModelTexts::role(role));
}

QString ModelTexts::problem(const QString &path, const ModelProblem &problem)
{
    return QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(path), reason(problem));
}

QString ModelTexts::builtInInstead(EngineRole role, const QString &reason)
{
    return tr("The network cannot be used (%1), the built-in engine takes its place. %2")
        .arg(ModelTexts::role(role), reason);
}

QString ModelTexts::reason(const ModelProblem &problem)
{
    const QString tensor = shown(problem.tensor), found = shown(problem.found);
    const QString expected = shown(problem.expected);
    switch (problem.kind) {
    case ModelProblem::Kind::None:
        break;
    case ModelProblem::Kind::NotOnnx:
        return tr("this is no ONNX file, or it is damaged.");
    case ModelProblem::Kind::UnknownRole:
        return tr("its inputs are \"%1\". A network for segmentation has an input \"keep\", one "
                  "for "
                  "tracking \"previous_matte\", one for inpainting \"hole\".")
            .arg(found);
    case ModelProblem::Kind::MissingInput:
        return tr("the input \"%1\" is missing; there are \"%2\".").arg(tensor, found);
    case ModelProblem::Kind::UnknownInput:
        return tr("nothing is known of an input \"%1\".").arg(tensor);
    case ModelProblem::Kind::UnusedInput:
        return tr("the network makes no use of its input \"%1\"; export it without.").arg(tensor);
    case ModelProblem::Kind::MissingOutput:
        return tr("the output \"%1\" is missing; there are \"%2\".").arg(tensor, found);
    case ModelProblem::Kind::WrongType:
        return tr("\"%1\" must have 32 bit floating point numbers.").arg(tensor);
    case ModelProblem::Kind::WrongShape:
        return tr("\"%1\" is %2, and must be %3.").arg(tensor, found, expected);
    case ModelProblem::Kind::Unsupported:
        if (!tensor.isEmpty())
            return tr("the operator \"%1\" cannot be used here (%2).").arg(tensor, found);
        return tr("the network cannot be used here (%1).").arg(found);
    case ModelProblem::Kind::CannotRun:
        return tr("the network cannot be run (%1).").arg(found);
    case ModelProblem::Kind::NotFinite:
        return tr("\"%1\" has values that are no numbers.").arg(tensor);
    case ModelProblem::Kind::OutOfRange:
        return tr("\"%1\" has values of %2; they must be %3.").arg(tensor, found, expected);
    }
    return {};
}

} // namespace zk::models
