#include "ZkPresetPicker.h"

#include "ZkOwnKeys.h"
#include "ZkPresetDelegate.h"
#include "ZkPresetDownloads.h"
#include "ZkPresetListModel.h"

#include "ZCutoutPresetItemManager.h"
#include "ZkSmartKeyingPresenter.h"
#include "ZkWidgets.h"
#include "library/ZkStudioMediaLibrary.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace zk::app {

namespace {

constexpr int exposeDelay = 100; // ms of standing still that count as having been seen

} // namespace

PresetPicker::PresetPicker(ZkSmartKeyingPresenter *presenter,
                           ZkStudioMediaLibrary *library,
                           QWidget *parent)
    : QWidget(parent)
    , m_presenter(presenter)
    , m_library(library)
    , m_downloads(new PresetDownloads(library, this))
    , m_model(new PresetListModel(presenter->presetManager()->itemModel(), m_downloads, this))
{
    setObjectName(QStringLiteral("WorkspacePresetPicker"));
    presenter->presetManager()->itemModel()->addVirtualNoneItem();
    buildSearch();
    buildList();
    buildNotice();
    layOut();
    connectPresenter();
    connectLibrary();
    retranslate();
    followList();
}

PresetPicker::~PresetPicker() = default;

bool PresetPicker::isDownloading() const
{
    return m_downloads->isAnyRunning();
}

void PresetPicker::buildSearch()
{
    m_search = new QLineEdit(this);
    m_search->setObjectName(QStringLiteral("WorkspacePresetSearch"));
    m_search->setClearButtonEnabled(true);
    m_search->addAction(ZkSkinManager::instance()->icon(QStringLiteral("search")),
                        QLineEdit::LeadingPosition);
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString &text) {
        m_model->setFilter(text);
        showNotice();
        m_exposeTimer.start();
    });
}

void PresetPicker::buildList()
{
    m_list = new QListView(this);
    m_list->setObjectName(QStringLiteral("WorkspacePresetList"));
    m_delegate = new PresetDelegate(m_list);
    m_list->setModel(m_model);
    m_list->setItemDelegate(m_delegate);
    m_list->setViewMode(QListView::IconMode);
    m_list->setMovement(QListView::Static);
    m_list->setResizeMode(QListView::Adjust);
    m_list->setGridSize(PresetDelegate::cellSize());
    m_list->setUniformItemSizes(true);
    m_list->setSelectionMode(QAbstractItemView::NoSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setMouseTracking(true); // for the look of what is pointed at
    m_list->setFocusPolicy(Qt::TabFocus); // a click leaves the keys to the window's shortcuts
    m_list->setMinimumHeight(2 * PresetDelegate::cellSize().height());
    new OwnKeys(m_list,
                OwnKeys::navigation()
                    + QVector<int> {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter});
    ZkSkinManager::instance()->applyStyleSheet(m_list, QStringLiteral("Workspace/PresetList"));
    m_list->installEventFilter(this);
    connect(m_list, &QListView::clicked, this, &PresetPicker::choose);

    m_exposeTimer.setSingleShot(true);
    m_exposeTimer.setInterval(exposeDelay);
    connect(&m_exposeTimer, &QTimer::timeout, this, &PresetPicker::exposeVisible);
    const auto lookAgain = [this] { m_exposeTimer.start(); };
    connect(m_list->verticalScrollBar(), &QScrollBar::valueChanged, this, lookAgain);
    connect(m_list->verticalScrollBar(), &QScrollBar::rangeChanged, this, lookAgain);
}

void PresetPicker::buildNotice()
{
    m_notice = new QWidget(this);
    m_notice->setObjectName(QStringLiteral("WorkspacePresetNotice"));
    m_noticeText = new QLabel(m_notice);
    m_noticeText->setObjectName(QStringLiteral("WorkspacePresetNoticeText"));
    m_noticeText->setWordWrap(true);
    m_retryButton = new QPushButton(m_notice);
    m_retryButton->setObjectName(QStringLiteral("WorkspacePresetRetry"));
    new EnterClicks(m_retryButton);
    m_retryButton->setFocusPolicy(Qt::TabFocus);
    connect(m_retryButton, &QPushButton::clicked, this, &PresetPicker::retry);
    auto *const row = new QHBoxLayout(m_notice);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_noticeText, 1);
    row->addWidget(m_retryButton);
}

void PresetPicker::layOut()
{
    auto *const column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(m_search);
    column->addWidget(m_notice);
    column->addWidget(m_list, 1);
}

void PresetPicker::connectPresenter()
{
    using Presenter = ZkSmartKeyingPresenter;
    connect(m_presenter, &Presenter::sigEffectAdded, this, &PresetPicker::followEffect);
    connect(m_presenter, &Presenter::sigEffectRemoved, this, &PresetPicker::followEffect);
    connect(m_presenter, &Presenter::sigEffectPropertyChanged, this, &PresetPicker::followEffect);
    connect(m_presenter, &Presenter::sigUndoRedoChanged, this, &PresetPicker::followEffect);
    connect(m_presenter, &Presenter::sigReset, this, &PresetPicker::followEffect);
    connect(m_presenter, &Presenter::sigEffectMediaItemsLoaded, this, &PresetPicker::followList);
    connect(m_presenter,
            &Presenter::sigEffectPresetItemDownloadFailed,
            this,
            &PresetPicker::followFailure);
    // Thumbnails arrive, and a reload brings other rows.
    connect(m_model, &QAbstractItemModel::dataChanged, this, [this] {
        m_delegate->forgetThumbnails();
    });
    connect(m_model, &QAbstractItemModel::modelReset, this, &PresetPicker::followList);
}

void PresetPicker::connectLibrary()
{
    connect(m_downloads, &PresetDownloads::runningChanged, this, &PresetPicker::downloadingChanged);
    connect(m_downloads, &PresetDownloads::folderStateChanged, this, &PresetPicker::showNotice);
    connect(m_library, &ZkStudioMediaLibrary::sigRefreshFinished, this, [this](int error) {
        // What could not be asked for before is asked for again.
        if (error == 0 && isServerUnreachable())
            m_presenter->presetManager()->loadCutoutPresetFolder();
        showNotice();
    });
}

void PresetPicker::retranslate()
{
    m_search->setPlaceholderText(tr("Search presets"));
    m_search->setAccessibleName(tr("Search presets"));
    m_list->setAccessibleName(tr("Cutout presets"));
    m_retryButton->setText(tr("Retry"));
    showNotice();
    m_list->viewport()->update();
}

void PresetPicker::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

void PresetPicker::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_exposeTimer.start();
}

bool PresetPicker::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_list || event->type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<QKeyEvent *>(event)->key();
    if (key != Qt::Key_Space && key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    choose(m_list->currentIndex());
    return true;
}

bool PresetPicker::isRunning(const IZkAbstractMediaItem *item) const
{
    return item && m_downloads->state(item->id()) == PresetDownloads::State::Running;
}

// A download starts inside the call, and may be refused there.
void PresetPicker::choose(const QModelIndex &index)
{
    const QModelIndex source = m_model->mapToSource(index);
    const IZkAbstractMediaItem *const item = ZCutoutPresetItemModel::mediaItemFromIndex(source);
    if (!index.isValid() || index.data(PresetListModel::AppliedRole).toBool() || isRunning(item))
        return;
    m_picked = source;
    m_hasFailed = false;
    if (item && item->needsDownload())
        m_downloads->start(item->id());
    m_presenter->selectPresetAtIndex(source);
    if (m_hasFailed && isRunning(item))
        m_downloads->fail(item->id());
    followEffect();
    showNotice();
}

void PresetPicker::followEffect()
{
    IZkEffect *const effect = m_presenter->getEffect();
    QModelIndex preset = m_presenter->findPresetIndexByEffect(effect);
    const IZkEffectDescriptor *const descriptor = effect ? effect->descriptor() : nullptr;
    if (!preset.isValid() && (!descriptor || descriptor->slug().isEmpty()))
        preset = m_presenter->presetManager()->itemModel()->index(0, 0);
    m_model->setApplied(preset);
}

void PresetPicker::followList()
{
    m_delegate->forgetThumbnails();
    followEffect();
    showNotice();
    m_exposeTimer.start();
}

void PresetPicker::followFailure()
{
    m_hasFailed = true;
    showNotice();
}

void PresetPicker::retry()
{
    if (m_hasFailed && m_picked.isValid())
        choose(m_model->mapFromSource(m_picked));
    else
        m_library->refreshCatalogue();
    showNotice();
}

bool PresetPicker::isServerUnreachable() const
{
    const IZkFolderMedia *const folder = m_presenter->presetManager()->itemModel()->folder();
    return folder && folder->loadState() == ZKVBLMODEL::zkmsFetchMoreError;
}

void PresetPicker::showNotice()
{
    QString text;
    if (m_hasFailed && m_picked.isValid())
        text = tr("\u201c%1\u201d could not be downloaded. Check the network connection.")
                   .arg(m_model->mapFromSource(m_picked).data().toString());
    else if (isServerUnreachable())
        text = tr("The preset server cannot be reached. Presets on this computer can be used.");
    m_retryButton->setVisible(!text.isEmpty());
    if (text.isEmpty() && !m_search->text().trimmed().isEmpty() && m_model->rowCount() <= 1)
        text = tr("No preset has that name.");
    m_noticeText->setText(text);
    m_notice->setVisible(!text.isEmpty());
}

// Reports what has come into sight, once per preset.
void PresetPicker::exposeVisible()
{
    if (!isVisible())
        return;
    const QRect viewport = m_list->viewport()->rect();
    for (int row = 0; row < m_model->rowCount(); ++row) {
        const QModelIndex index = m_model->index(row, 0);
        const QString slug = index.data(ZCutoutPresetItemModel::SlugRole).toString();
        if (slug.isEmpty() || m_exposed.contains(slug)
            || !viewport.contains(m_list->visualRect(index).center()))
            continue;
        m_exposed.insert(slug);
        m_presenter->trackPresetAtIndex(m_model->mapToSource(index));
    }
}

} // namespace zk::app
