// Not public: the files of a skin as they are once read.
#pragma once

#include <QColor>
#include <QHash>
#include <QString>
#include <QStringList>

class QJsonObject;

// A skin is a folder with a palette.json and one style sheet file per area, AREA.qss. A file is a
// row of sections; a section begins with a comment line of its own, "/* @section OBJECTNAME */".
// A style sheet writes a colour of the palette as @NAME. A line "@use AREA/OBJECTNAME" stands for the
// rules of that section, which must not use others in its turn. A mistake in a skin is reported as a
// warning and costs what it is in, nothing else.
class ZkSkin
{
public:
    explicit ZkSkin(const QString &folder);

    QColor color(int number) const { return m_byNumber.value(number); }
    QColor color(const QString &name) const { return m_byName.value(name); }
    // Null when there is no such section; a section may well be empty.
    QString styleSheet(const QString &key) const { return m_styleSheets.value(key); }
    QStringList keys() const { return m_styleSheets.keys(); }

private:
    void readPalette(const QString &path);
    void addColor(const QJsonObject &entry);
    void readSections(const QString &path, const QString &area);
    QString withUsed(const QString &key) const;
    QString withColors(const QString &section, const QString &key) const;

    QHash<int, QColor> m_byNumber;
    QHash<QString, QColor> m_byName;
    QHash<QString, QString> m_sections; // as the files write them, by "area/objectName"
    QHash<QString, QString> m_styleSheets; // by "area/objectName"
};
