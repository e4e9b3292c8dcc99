#include "ZkSkin_p.h"

#include "ZkCore.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

namespace {

void warn(const QString &message)
{
    ZkLogRecord record;
    record.level = ZKLOG::Warning;
    record.file = QStringLiteral("ZkWidgets/ZkSkin");
    record.line = __LINE__;
    record.function = QStringLiteral("ZkSkin::ZkSkin");
    record.message = message;
    ZkBaseLog::logger(QStringLiteral("widgets"))->write(record);
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        return file.readAll();
    warn(QStringLiteral("cannot read %1: %2").arg(path, file.errorString()));
    return {};
}

} // namespace

ZkSkin::ZkSkin(const QString &folder)
{
    const QDir dir(folder);
    readPalette(dir.filePath(QStringLiteral("palette.json")));
    const auto files = dir.entryInfoList({QStringLiteral("*.qss")}, QDir::Files, QDir::Name);
    for (const QFileInfo &file : files)
        readSections(file.filePath(), file.completeBaseName());
    const QStringList keys = m_sections.keys();
    for (const QString &key : keys)
        m_styleSheets.insert(key, withColors(withUsed(key), key));
}

void ZkSkin::readPalette(const QString &path)
{
    QJsonParseError error {};
    const QByteArray text = contents(path);
    if (text.isEmpty())
        return;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError)
        warn(
            QStringLiteral("%1, byte %2: %3").arg(path).arg(error.offset).arg(error.errorString()));
    const QJsonArray colors = document.object().value(QLatin1String("colors")).toArray();
    for (const QJsonValue &entry : colors)
        addColor(entry.toObject());
}

void ZkSkin::addColor(const QJsonObject &entry)
{
    const QString name = entry.value(QLatin1String("name")).toString();
    const QColor color(entry.value(QLatin1String("value")).toString());
    if (!color.isValid()) {
        warn(QStringLiteral("the palette has no valid colour for \"%1\"").arg(name));
        return;
    }
    m_byName.insert(name, color.rgb());
    const QJsonValue number = entry.value(QLatin1String("number"));
    if (number.isDouble())
        m_byNumber.insert(number.toInt(), color.rgb());
}

void ZkSkin::readSections(const QString &path, const QString &area)
{
    static const QRegularExpression header(
        QStringLiteral("^/\\*\\s*@section\\s+(\\S+)\\s*\\*/\\s*$"),
        QRegularExpression::MultilineOption);
    const QString text = QString::fromUtf8(contents(path));
    QRegularExpressionMatch section = header.match(text);
    while (section.hasMatch()) {
        const int begin = section.capturedEnd();
        const QRegularExpressionMatch next = header.match(text, begin);
        const int end = next.hasMatch() ? next.capturedStart() : text.size();
        const QString key = area + QLatin1Char('/') + section.captured(1);
        m_sections.insert(key, text.mid(begin, end - begin).trimmed());
        section = next;
    }
}

QString ZkSkin::withUsed(const QString &key) const
{
    static const QRegularExpression use(QStringLiteral("^@use\\s+(\\S+)\\s*$"),
                                        QRegularExpression::MultilineOption);
    const QString section = m_sections.value(key);
    QString result = QLatin1String("");
    int copied = 0;
    auto uses = use.globalMatch(section);
    while (uses.hasNext()) {
        const QRegularExpressionMatch match = uses.next();
        const auto used = m_sections.constFind(match.captured(1));
        if (used == m_sections.constEnd())
            warn(QStringLiteral("%1 uses the unknown section %2").arg(key, match.captured(1)));
        result += section.midRef(copied, match.capturedStart() - copied);
        result += used == m_sections.constEnd() ? QString() : withUsed(used.key()) + QLatin1Char('\n');
        copied = match.capturedEnd();
    }
    return result + section.midRef(copied);
}

QString ZkSkin::withColors(const QString &section, const QString &key) const
{
    static const QRegularExpression reference(QStringLiteral("@(\\w+)"));
    QString result = QLatin1String("");
    int copied = 0;
    auto references = reference.globalMatch(section);
    while (references.hasNext()) {
        const QRegularExpressionMatch match = references.next();
        const QColor color = m_byName.value(match.captured(1));
        if (!color.isValid())
            warn(QStringLiteral("%1 names the unknown colour %2").arg(key, match.captured(1)));
        result += section.midRef(copied, match.capturedStart() - copied) + color.name();
        copied = match.capturedEnd();
    }
    return result + section.midRef(copied);
}
