#include "LibraryFixture.h"

#include <QDirIterator>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

namespace {

class Effect : public IZkEffect, public IZkEffectDescriptor
{
public:
    explicit Effect(const QString &slug)
        : m_slug(slug)
    { }
    qint64 id() const override { return 1; }
    const IZkEffectDescriptor *descriptor() const override { return this; }
    bool isEnabled() const override { return true; }
    void setEnabled(bool) override { }
    ZkEffectPtr createInstance() const override { return nullptr; }
    int type() const override { return ZKTIMELINE::SmartKeyingEffect; }
    QString slug() const override { return m_slug; }

private:
    QString m_slug;
};

ZkEffectPtr makeEffect(const QByteArray &json, const QString &slug, QString *error)
{
    zk::effects::Look look;
    if (!zk::effects::Look::fromJson(json, &look, error) || look.slug != slug)
        return nullptr;
    return ZkEffectPtr(new Effect(slug));
}

QString slugOf(IZkAbstractMedia *media)
{
    return media->mediaItem()->slug();
}

} // namespace

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

void NoticeLog::onBeforeAddItemEvent(IZkFolderMedia *, IZkAbstractMedia *media)
{
    note(QStringLiteral("adding ") + slugOf(media));
}

void NoticeLog::onAfterAddItemEvent(IZkFolderMedia *folder, IZkAbstractMedia *media)
{
    const bool isLast = folder->medias(false).last() == media;
    note(QStringLiteral("added ") + slugOf(media) + QLatin1String(isLast ? "" : " wrongly"));
}

void NoticeLog::onBeforeRemoveItemEvent(IZkFolderMedia *, IZkAbstractMedia *media)
{
    note(QStringLiteral("removing ") + slugOf(media));
}

void NoticeLog::onAfterRemoveItemEvent(IZkFolderMedia *folder, IZkAbstractMedia *media)
{
    const bool isGone = !folder->medias(false).contains(media);
    note(QStringLiteral("removed ") + slugOf(media) + QLatin1String(isGone ? "" : " wrongly"));
}

void NoticeLog::onAllMediaChangedFinishEvent(IZkFolderMedia *folder)
{
    note(QStringLiteral("loaded ") + folder->name());
}

void NoticeLog::onDownloadFinishedEvent(IZkAbstractMedia *media,
                                        ZKVBLMODEL::ZkMediaDownloadType type,
                                        int error)
{
    note(QStringLiteral("finished %1 %2 %3").arg(slugOf(media)).arg(int(type)).arg(error));
}

void NoticeLog::onDownloadProgressEvent(IZkAbstractMedia *,
                                        ZKVBLMODEL::ZkMediaDownloadType,
                                        int percent)
{
    percents.append(percent);
}

void NoticeLog::onFetchMoreStateChangedEvent(IZkFolderMedia *folder, int state)
{
    note(QStringLiteral("state %1 %2").arg(folder->name()).arg(state));
}

void NoticeLog::onItemDataChangedEvent(IZkAbstractMedia *media)
{
    note(QStringLiteral("changed ") + slugOf(media));
}

void NoticeLog::onMediaStateChangedEvent(IZkAbstractMedia *media)
{
    note(QStringLiteral("on disk ") + slugOf(media));
}

void NoticeLog::beforeCategoryTreeReload()
{
    note(QStringLiteral("before reload"));
}

void NoticeLog::afterCategoryTreeReload()
{
    note(QStringLiteral("after reload"));
}

LibraryFixture::LibraryFixture(const QUrl &server)
{
    settings.directory = directory.filePath(QStringLiteral("library"));
    settings.server = server;
    settings.downloads.stallTimeoutMs = 300;
    settings.downloads.retryDelayMs = 10;
    settings.effectFactory = makeEffect;
}

LibraryFixture::~LibraryFixture()
{
    close();
}

bool LibraryFixture::open(QString *error)
{
    close();
    m_library = std::make_unique<ZkStudioMediaLibrary>(settings);
    m_library->mediaItemManager()->addObserver(&log);
    m_library->addCategoryTreeObserver(&log);
    return m_library->open(error);
}

void LibraryFixture::close()
{
    m_library.reset();
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

IZkEffectMediaItem *LibraryFixture::item(const QString &slug) const
{
    const auto medias = root()->medias(true);
    for (IZkAbstractMedia *media : medias) {
        if (media->mediaItem()->slug() == slug)
            return dynamic_cast<IZkEffectMediaItem *>(media->mediaItem());
    }
    return nullptr;
}

QStringList LibraryFixture::slugs() const
{
    QStringList slugs;
    const auto medias = presets()->medias(true);
    for (IZkAbstractMedia *media : medias)
        slugs.append(slugOf(media));
    return slugs;
}

QString LibraryFixture::download(const QString &slug, ZKVBLMODEL::ZkMediaDownloadType type)
{
    const QString prefix = QStringLiteral("finished %1 %2 ").arg(slug).arg(int(type));
    const int before = log.count(prefix);
    const int start = m_library->mediaItemManager()->downloadItem(item(slug), type);
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
