#include "ZkLookCatalogue.h"

#include <QDir>
#include <QFile>
#include <QSet>

#include <algorithm>
#include <tuple>

namespace zk::effects {

QVector<Look> LookCatalogue::builtin(QStringList *errors)
{
    QVector<Look> looks;
    QStringList problems;
    QSet<QString> slugs;
    const QDir folder(QStringLiteral(":/zk/effects/presets"));
    for (const QString &name : folder.entryList({QStringLiteral("*.json")}, QDir::Files)) {
        QFile file(folder.filePath(name));
        Look look;
        QString problem;
        if (!file.open(QIODevice::ReadOnly))
            problem = file.errorString();
        else if (Look::fromJson(file.readAll(), &look, &problem) && slugs.contains(look.slug))
            problem = QStringLiteral("slug: \"%1\" is taken").arg(look.slug);
        if (!problem.isEmpty()) {
            problems.append(name + QLatin1String(": ") + problem);
            continue;
        }
        slugs.insert(look.slug);
        looks.append(look);
    }
    std::sort(looks.begin(), looks.end(), [](const Look &a, const Look &b) {
        return std::tie(a.category, a.name) < std::tie(b.category, b.name);
    });
    if (errors)
        *errors = problems;
    return looks;
}

} // namespace zk::effects
