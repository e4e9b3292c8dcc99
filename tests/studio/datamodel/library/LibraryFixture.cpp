#include "LibraryFixture.h"

#include "timeline/ZkStudioEffect.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

int NoticeLog::count(const QString &prefix) const
{
    return entries.filter(QRegularExpression(QLatin1Char('^') + prefix)).size();
}

void NoticeLog::note(const QString &entry)
{
    entries.append(entry);
    if (onEntry)
        onEntry(entry);
}

void NoticeLog::note(const char *what, Media *media)
{
    note(QLatin1String(what) + QLatin1Char(' ') + media->mediaItem()->slug());
}

void NoticeLog::onDownloadFinishedEvent(Media *media, Type type, int error)
{
    note(QStringLiteral("finished %1 %2 %3").arg(media->mediaItem()->slug()).arg(type).arg(error));
}

LibraryFixture::LibraryFixture(const QUrl &server)
{
    settings.directory = directory.filePath(QStringLiteral("library"));
    settings.server = server;
    settings.downloads.stallTimeoutMs = 300;
    settings.downloads.retryDelayMs = 10;
    settings.effectFactory = &ZkStudioEffect::fromLookJson;
}

bool LibraryFixture::open(QString *error)
{
    close();
    m_library = std::make_unique<ZkStudioMediaLibrary>(settings);
    manager()->addObserver(&log);
    m_library->addCategoryTreeObserver(&log);
    return m_library->open(error);
}

bool LibraryFixture::import(const QString &slugs)
{
    return m_library->importLooks(looks(slugs));
}

IZkFolderMedia *LibraryFixture::root() const
{
    return m_library->module(ZKVBLMODEL::SmartCutoutCategory)->rootFolder();
}

IZkFolderMedia *LibraryFixture::folder(const QString &name) const
{
    const auto folders = m_library->folderMediaManager()->folders(root(), true);
    for (IZkFolderMedia *folder : folders) {
        if (folder->name() == name)
            return folder;
    }
    return nullptr;
}

IZkFolderMedia *LibraryFixture::presets() const
{
    return folder(QStringLiteral("subject_smart_cutout_preset"));
}

QVector<IZkEffectMediaItem *> LibraryFixture::items() const
{
    QVector<IZkEffectMediaItem *> items;
    for (IZkAbstractMedia *media : root()->medias(true))
        items.append(dynamic_cast<IZkEffectMediaItem *>(media->mediaItem()));
    return items;
}

IZkEffectMediaItem *LibraryFixture::item(const QString &slug) const
{
    for (IZkEffectMediaItem *item : items()) {
        if (item->slug() == slug)
            return item;
    }
    return nullptr;
}

QString LibraryFixture::slugs() const
{
    QStringList slugs;
    for (IZkEffectMediaItem *item : items())
        slugs.append(item->slug());
    return slugs.join(QLatin1Char(' '));
}

QString LibraryFixture::download(const QString &slug, ZKVBLMODEL::ZkMediaDownloadType type)
{
    const QString prefix = QStringLiteral("finished %1 %2 ").arg(slug).arg(type);
    const int before = log.count(prefix);
    const int start = manager()->downloadItem(item(slug), type);
    if (start != ZKVBLMODEL::DownloadStarted)
        return QStringLiteral("start %1").arg(start);
    if (log.count(prefix) != before)
        return QStringLiteral("finished inside the call");
    if (!QTest::qWaitFor([&] { return log.count(prefix) > before; }, 10000))
        return QStringLiteral("no end");
    QTest::qWait(20); // for a second end, which would be wrong
    return log.count(prefix) == before + 1
        ? log.entries.filter(prefix).last()
        : QStringLiteral("%1 ends").arg(log.count(prefix) - before);
}

int LibraryFixture::refresh()
{
    QSignalSpy spy(m_library.get(), &ZkStudioMediaLibrary::sigRefreshFinished);
    if (!m_library->refreshCatalogue() || !spy.isEmpty() || !spy.wait(10000))
        return -1;
    return spy.first().first().toInt();
}

QStringList LibraryFixture::files() const
{
    const QDir root(settings.directory);
    QStringList files;
    QDirIterator found(root.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (found.hasNext()) {
        const QString file = root.relativeFilePath(found.next());
        if (!file.startsWith(QLatin1String("library.")))
            files.append(file);
    }
    files.sort();
    return files;
}

zk::effects::Look makeLook(const QString &slug, int version, int layers)
{
    zk::effects::Look look;
    look.slug = slug;
    look.name = slug.toUpper();
    look.category = QStringLiteral("Test");
    look.version = version;
    look.layers.resize(layers);
    return look;
}

QVector<zk::effects::Look> looks(const QString &slugs)
{
    QVector<zk::effects::Look> result;
    for (const QString &slug : slugs.split(QLatin1Char(' ')))
        result.append(makeLook(slug));
    return result;
}

void expectWarning(const QString &pattern)
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(pattern));
}
