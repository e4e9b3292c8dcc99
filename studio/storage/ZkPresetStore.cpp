#include "ZkPresetStore.h"

#include "PresetRows_p.h"
#include "ZkDurableFile.h"

#include <QAtomicInt>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QLockFile>
#include <QLoggingCategory>
#include <QSet>

namespace zk::storage {

namespace {

Q_LOGGING_CATEGORY(log, "zk.studio.storage")

constexpr char packagesFolder[] = "packages";
constexpr char thumbnailsFolder[] = "thumbnails";
constexpr char incomingFolder[] = "incoming";
constexpr const char *subFolders[] = {packagesFolder, thumbnailsFolder, incomingFolder};

// A file name without surprises, whatever the address ends with.
QString suffixOf(const PresetItem &item, ResourceKind kind)
{
    if (kind == ResourceKind::Package)
        return QStringLiteral("json");
    const QString suffix = QFileInfo(item.thumbnail.url.path()).suffix().toLower();
    static const QStringList known {QStringLiteral("jpg"),
                                    QStringLiteral("jpeg"),
                                    QStringLiteral("webp"),
                                    QStringLiteral("gif")};
    return known.contains(suffix) ? suffix : QStringLiteral("png");
}

} // namespace

class PresetStore::Private
{
public:
    explicit Private(const QString &path)
        : directory(QDir(path).absolutePath())
        , lock(QDir(directory).filePath(QStringLiteral("library.lock")))
    {
        lock.setStaleLockTime(0);
    }

    QString absolute(const QString &file) const { return QDir(directory).filePath(file); }
    QString databasePath() const { return absolute(QStringLiteral("library.db")); }
    bool fail(const QString &reason)
    {
        error = reason;
        return false;
    }

    bool makeFolders();
    OpenResult openDatabase();
    OpenResult rebuild(const QString &reason);
    bool moveDamagedAside();

    bool takeBackMissing(const QVector<PresetItem> &items);
    void removeUnnamed(const QVector<PresetItem> &items);
    void removeDroppedFiles();

    // Passes the result on and keeps the reason when it is false.
    bool check(bool isGood) { return isGood || fail(database.errorText()); }

    const QString directory;
    QLockFile lock;
    PresetDatabase database;
    PresetRows rows {database};
    QString error;
    QStringList dropped; // files to delete when the outermost transaction is through
};

bool PresetStore::Private::makeFolders()
{
    for (const char *folder : subFolders) {
        if (!QDir().mkpath(absolute(QLatin1String(folder))))
            return fail(QStringLiteral("%1: the folder cannot be made")
                            .arg(absolute(QLatin1String(folder))));
    }
    return true;
}

PresetStore::OpenResult PresetStore::Private::openDatabase()
{
    using State = PresetDatabase::State;
    const State state = database.open(databasePath());
    const QString reason = database.errorText();
    if (state == State::Good)
        return OpenResult::Opened;
    if (state == State::Damaged)
        return rebuild(reason);
    if (state == State::Empty && database.createTables())
        return OpenResult::Created;
    error = QStringLiteral("%1: %2").arg(databasePath(),
                                         state == State::Empty ? database.errorText() : reason);
    database.close();
    return state == State::Newer ? OpenResult::NewerVersion : OpenResult::Failed;
}

PresetStore::OpenResult PresetStore::Private::rebuild(const QString &reason)
{
    error = QStringLiteral("%1 is damaged (%2)").arg(databasePath(), reason);
    if (!lock.isLocked() || !moveDamagedAside())
        return OpenResult::Failed;
    if (database.open(databasePath()) == PresetDatabase::State::Empty && database.createTables())
        return OpenResult::Rebuilt;
    error = QStringLiteral("%1: %2").arg(databasePath(), database.errorText());
    database.close();
    return OpenResult::Failed;
}

// With its journal: SQLite would play that back into the new database.
bool PresetStore::Private::moveDamagedAside()
{
    const QString aside =
        QStringLiteral("%1.damaged-%2")
            .arg(databasePath(),
                 QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-HHmmss-zzz")));
    qCWarning(log).noquote() << error << "- it was kept as" << aside
                             << "and the library starts anew";
    const QString journal = QStringLiteral("-journal");
    if (QFile::exists(databasePath() + journal))
        QFile::rename(databasePath() + journal, aside + journal);
    return QFile::rename(databasePath(), aside);
}

// What a row names but the disk lacks has to be fetched again.
bool PresetStore::Private::takeBackMissing(const QVector<PresetItem> &items)
{
    bool isGood = database.begin();
    for (const PresetItem &item : items) {
        for (ResourceKind kind : resourceKinds) {
            const Resource &resource = item.resource(kind);
            const QFileInfo file(absolute(resource.file));
            if (!resource.isOnDisk() || (file.isFile() && file.size() == resource.fileSize))
                continue;
            qCInfo(log) << "missing or cut short:" << file.filePath();
            isGood = isGood && rows.forgetFile(item.id, kind);
        }
    }
    if (database.depth() == 0)
        return false;
    if (isGood)
        return database.commit();
    database.rollback();
    return false;
}

void PresetStore::Private::removeUnnamed(const QVector<PresetItem> &items)
{
    QSet<QString> named;
    for (const PresetItem &item : items) {
        for (ResourceKind kind : resourceKinds)
            named.insert(absolute(item.resource(kind).file));
    }
    for (const char *folder : subFolders) {
        QDirIterator files(absolute(QLatin1String(folder)),
                           QDir::Files | QDir::Hidden | QDir::System);
        while (files.hasNext()) {
            const QString path = files.next();
            if (!named.contains(path) && QFile::remove(path))
                qCInfo(log) << "removed what was left half-made:" << path;
        }
    }
}

void PresetStore::Private::removeDroppedFiles()
{
    for (const QString &file : qAsConst(dropped)) {
        if (!file.isEmpty())
            QFile::remove(absolute(file));
    }
    dropped.clear();
}

PresetStore::PresetStore(const QString &directory)
    : d(std::make_unique<Private>(directory))
{ }

PresetStore::~PresetStore() = default;

PresetStore::OpenResult PresetStore::open()
{
    d->database.close();
    if (!d->makeFolders())
        return OpenResult::Failed;
    if (!d->lock.isLocked())
        d->lock.tryLock(0);
    const OpenResult result = d->openDatabase();
    QVector<PresetItem> items;
    if (!isOpen() || !d->check(d->rows.readItems(&items)))
        return result;
    if (!d->takeBackMissing(items))
        qCWarning(log).noquote() << d->database.errorText();
    // A file that was cut short is still named here, and is replaced when it is fetched again.
    if (d->lock.isLocked())
        d->removeUnnamed(items);
    return result;
}

bool PresetStore::isOpen() const
{
    return d->database.isOpen();
}

QString PresetStore::errorText() const
{
    return d->error;
}

QString PresetStore::directory() const
{
    return d->directory;
}

QString PresetStore::databasePath() const
{
    return d->databasePath();
}

QString PresetStore::absolutePath(const QString &file) const
{
    return d->absolute(file);
}

QString PresetStore::fileFor(const PresetItem &item, ResourceKind kind)
{
    const bool isPackage = kind == ResourceKind::Package;
    return QStringLiteral("%1/%2-%3.%4")
        .arg(QLatin1String(isPackage ? packagesFolder : thumbnailsFolder),
             item.slug,
             QString::fromLatin1(item.resource(kind).sha256.left(12)),
             suffixOf(item, kind));
}

QString PresetStore::incomingPath(const QString &file) const
{
    static QAtomicInt counter;
    return d->absolute(QStringLiteral("%1/%2.%3-%4.part")
                           .arg(QLatin1String(incomingFolder), QFileInfo(file).fileName())
                           .arg(QCoreApplication::applicationPid())
                           .arg(counter.fetchAndAddRelaxed(1)));
}

QVector<PresetCategory> PresetStore::categories() const
{
    QVector<PresetCategory> result;
    d->check(d->rows.readCategories(&result));
    return result;
}

QVector<PresetFolder> PresetStore::folders(int category) const
{
    QVector<PresetFolder> result;
    d->check(d->rows.readFolders(category, &result));
    return result;
}

QVector<PresetItem> PresetStore::items() const
{
    QVector<PresetItem> result;
    d->check(d->rows.readItems(&result));
    return result;
}

bool PresetStore::findItem(const QString &slug, PresetItem *item) const
{
    return d->rows.findItem(slug, item);
}

bool PresetStore::findItem(qint64 id, PresetItem *item) const
{
    return d->rows.findItem(id, item);
}

bool PresetStore::saveCategory(const PresetCategory &category)
{
    return d->check(d->rows.saveCategory(category));
}

qint64 PresetStore::ensureFolder(int category, const QStringList &path)
{
    Transaction transaction(*this);
    qint64 folder = 0;
    for (const QString &name : path) {
        const qint64 found = d->rows.childFolder(category, folder, name);
        folder = found > 0 ? found : d->rows.addFolder(category, folder, name);
        if (!d->check(folder > 0))
            return 0;
    }
    return transaction.commit() ? folder : 0;
}

bool PresetStore::removeEmptyFolders(int category, const QVector<qint64> &keep)
{
    Transaction transaction(*this);
    QVector<PresetFolder> all;
    bool isGood = d->rows.readFolders(category, &all);
    // The deepest first, so that a folder of empty folders goes too.
    for (auto folder = all.crbegin(); folder != all.crend(); ++folder) {
        if (!keep.contains(folder->id))
            isGood = isGood && d->rows.removeFolderIfEmpty(folder->id);
    }
    return d->check(isGood) && transaction.commit();
}

bool PresetStore::saveItem(PresetItem *item)
{
    Transaction transaction(*this);
    PresetItem saved = *item;
    bool isGood = d->rows.saveItem(&saved);
    for (ResourceKind kind : resourceKinds)
        isGood = isGood && d->rows.saveOffer(saved.id, kind, saved.resource(kind));
    if (!d->check(isGood) || !transaction.commit())
        return false;
    *item = saved;
    return true;
}

bool PresetStore::removeItem(qint64 id)
{
    Transaction transaction(*this);
    PresetItem item;
    const bool isKnown = d->rows.findItem(id, &item);
    if (!d->check(d->rows.removeItem(id)))
        return false;
    if (isKnown)
        d->dropped << item.thumbnail.file << item.package.file;
    return transaction.commit();
}

bool PresetStore::setFile(qint64 id, ResourceKind kind, const QString &file)
{
    Resource resource;
    resource.file = file;
    resource.fileSha256 = sha256OfFile(d->absolute(file));
    resource.fileSize = QFileInfo(d->absolute(file)).size();
    if (resource.fileSha256.isEmpty())
        return d->fail(QStringLiteral("%1: the file cannot be read").arg(d->absolute(file)));

    Transaction transaction(*this);
    PresetItem before;
    const bool isKnown = d->rows.findItem(id, &before);
    if (!d->check(d->rows.saveFile(id, kind, resource)))
        return false;
    if (isKnown && before.resource(kind).file != file)
        d->dropped << before.resource(kind).file;
    return transaction.commit();
}

bool PresetStore::clearFile(qint64 id, ResourceKind kind)
{
    Transaction transaction(*this);
    PresetItem before;
    const bool isKnown = d->rows.findItem(id, &before);
    if (!d->check(d->rows.forgetFile(id, kind)))
        return false;
    if (isKnown)
        d->dropped << before.resource(kind).file;
    return transaction.commit();
}

PresetStore::Transaction::Transaction(PresetStore &store)
    : m_store(store)
    , m_isOpen(store.d->check(store.d->database.begin()))
    , m_droppedBefore(store.d->dropped.size())
{ }

PresetStore::Transaction::~Transaction()
{
    if (m_isOpen)
        undo();
}

bool PresetStore::Transaction::commit()
{
    if (!m_isOpen)
        return false;
    m_isOpen = false;
    PresetStore::Private &d = *m_store.d;
    if (!d.check(d.database.commit())) {
        d.dropped = d.dropped.mid(0, m_droppedBefore);
        return false;
    }
    if (d.database.depth() == 0)
        d.removeDroppedFiles();
    return true;
}

// The rows name the dropped files again.
void PresetStore::Transaction::undo()
{
    PresetStore::Private &d = *m_store.d;
    d.database.rollback();
    d.dropped = d.dropped.mid(0, m_droppedBefore);
}

} // namespace zk::storage
