#include "ZkExportForm.h"

#include "ZkFormat.h"
#include "ZkPreferences.h"

#include "ZkWidgets.h"
#include "project/ZkProject.h"
#include "timeline/ZkStudioTimeline.h"

#include <QCheckBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>

namespace zk::app {

using datamodel::Project;
using datamodel::ProjectClip;

namespace {

constexpr qint64 allClips = -1; // data of the clip box; otherwise the id of a clip

bool isSequence(const ExportFormat &format)
{
    return format.format == media::OutputFormat::PngSequence;
}

bool isSequencePath(const QString &output)
{
    return output.contains(QLatin1Char('%'));
}

} // namespace

ExportForm::ExportForm(datamodel::Project *project, QWidget *parent)
    : QWidget(parent)
    , m_project(project)
    , m_formats(exportFormats())
    , m_clip(new ZkComboBox(this))
    , m_format(new ZkComboBox(this))
    , m_target(new QLineEdit(this))
    , m_matteOnly(new QCheckBox(tr("Write the matte only"), this))
{
    setObjectName(QStringLiteral("ExportForm"));
    auto *form = new QFormLayout(this);
    form->setContentsMargins(0, 0, 0, 0);
    form->setHorizontalSpacing(16);
    form->setVerticalSpacing(10);
    form->addRow(tr("&Clip"), m_clip);
    form->addRow(tr("&Format"), m_format);
    form->addRow(tr("&Save to"), createTargetRow());
    form->addRow(QString(), m_matteOnly);
    form->addRow(tr("&Background"), createBackgroundRow());
    setUpChoices();
    proposeTarget();
    connectChoices();
    refresh();
}

void ExportForm::setUpChoices()
{
    m_clip->setObjectName(QStringLiteral("ExportDialog_Clip"));
    m_format->setObjectName(QStringLiteral("ExportDialog_Format"));
    m_matteOnly->setObjectName(QStringLiteral("ExportDialog_MatteOnly"));
    m_clip->setAccessibleName(tr("Clip"));
    m_format->setAccessibleName(tr("Format"));
    for (const ExportFormat &format : m_formats)
        m_format->addItem(format.name);
    listClips(0);
}

// With that clip chosen, or else the current one.
void ExportForm::listClips(qint64 chosen)
{
    const QSignalBlocker quiet(m_clip);
    m_clip->clear();
    for (int i = 0; i < m_project->clipCount(); ++i) {
        const ProjectClip *clip = m_project->clipAt(i);
        if (!clip->isOffline())
            m_clip->addItem(QStringLiteral("%1. %2").arg(i + 1).arg(clip->name()), clip->id());
    }
    if (m_clip->count() > 1)
        m_clip->addItem(tr("All clips, a file each"), allClips);
    const ProjectClip *current = m_project->currentClip();
    const int place = m_clip->findData(chosen);
    m_clip->setCurrentIndex(place >= 0 ? place
                                       : qMax(0, m_clip->findData(current ? current->id() : 0)));
}

// The project goes on while the form is open. What was typed stays where the choice does.
void ExportForm::followProject()
{
    const QVariant chosen = m_clip->currentData();
    listClips(chosen.toLongLong());
    if (m_clip->currentData() != chosen)
        proposeTarget();
    refresh();
}

QWidget *ExportForm::createTargetRow()
{
    auto *row = new QWidget(this);
    auto *browse = new QPushButton(tr("Browse..."), row);
    browse->setObjectName(QStringLiteral("ExportDialog_Browse"));
    m_target->setObjectName(QStringLiteral("ExportDialog_Target"));
    m_target->setAccessibleName(tr("Save to"));
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_target, 1);
    layout->addWidget(browse);
    row->setFocusProxy(m_target);
    row->setFocusPolicy(m_target->focusPolicy()); // a label passes its key to no other buddy
    connect(browse, &QPushButton::clicked, this, &ExportForm::chooseTarget);
    return row;
}

QWidget *ExportForm::createBackgroundRow()
{
    auto *row = new QWidget(this);
    m_background = new ZkComboBox(row);
    m_background->setObjectName(QStringLiteral("ExportDialog_Background"));
    m_background->setAccessibleName(tr("Background"));
    m_background->addItem(tr("Black"), BlackBackground);
    m_background->addItem(tr("Colour"), ColourBackground);
    m_background->addItem(tr("Picture"), PictureBackground);
    m_colour = new ZkColorToolButton(QColor(QStringLiteral("#00b140")), row);
    m_colour->setObjectName(QStringLiteral("ExportDialog_Colour"));
    m_colour->setToolTip(tr("Choose the colour"));
    m_pictureButton = new QPushButton(tr("Choose..."), row);
    m_pictureButton->setObjectName(QStringLiteral("ExportDialog_Picture"));
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_background);
    layout->addWidget(m_colour);
    layout->addWidget(m_pictureButton);
    layout->addStretch();
    row->setFocusProxy(m_background);
    row->setFocusPolicy(m_background->focusPolicy());
    connect(m_colour, &QAbstractButton::clicked, this, &ExportForm::chooseColour);
    connect(m_pictureButton, &QPushButton::clicked, this, &ExportForm::choosePicture);
    return row;
}

const ExportFormat &ExportForm::format() const
{
    return m_formats.at(qMax(0, m_format->currentIndex()));
}

QVector<const ProjectClip *> ExportForm::chosenClips() const
{
    QVector<const ProjectClip *> clips;
    const qint64 chosen = m_clip->currentData().toLongLong();
    for (int row = 0; row < m_clip->count(); ++row) {
        const ProjectClip *clip = m_project->findClip(m_clip->itemData(row).toLongLong());
        if (clip && (chosen == allClips || chosen == clip->id()))
            clips.append(clip);
    }
    return clips;
}

QString ExportForm::outputFor(int index, int count) const
{
    QString path = target();
    const QString suffix = isSequence(format()) ? QString() : format().suffix;
    if (path.endsWith(suffix, Qt::CaseInsensitive))
        path.chop(suffix.size());
    if (count > 1)
        path += QStringLiteral("-%1").arg(index + 1, 2, 10, QLatin1Char('0'));
    return path + format().suffix;
}

ExportSettings ExportForm::settingsFor(const QString &output) const
{
    ExportSettings settings;
    settings.outputs = QStringList(output);
    settings.matteOnly = m_matteOnly->isChecked();
    switch (m_background->currentData().toInt()) {
    case ColourBackground:
        settings.backgroundColour = m_colour->color();
        break;
    case PictureBackground:
        settings.backgroundPicture = m_picture;
        break;
    default:
        break;
    }
    return settings;
}

QVector<ExportItem> ExportForm::items() const
{
    QVector<ExportItem> items;
    const QVector<const ProjectClip *> clips = chosenClips();
    for (int i = 0; i < clips.size(); ++i)
        items.append({datamodel::RenderSnapshot(*clips.at(i)->timeline()),
                      settingsFor(outputFor(i, clips.size()))});
    return items;
}

QString ExportForm::summary() const
{
    const QVector<const ProjectClip *> clips = chosenClips();
    if (clips.isEmpty())
        return tr("There is no clip to export.");
    if (clips.size() > 1)
        return tr("%n clip(s), each in its own size and rate", nullptr, clips.size());
    const ZkStudioTimeline &timeline = *clips.first()->timeline();
    const media::MediaInfo &media = timeline.clip()->media();
    QStringList parts {sizeText(media::encodedSize(format().format, timeline.frameSize())),
                       rateText(media),
                       tr("%n frame(s)", nullptr, int(timeline.frameCount())),
                       media.hasAudio && format().hasAudio ? tr("with sound")
                                                           : tr("without sound")};
    if (!clips.first()->isCutOut())
        parts.append(tr("nothing is cut out"));
    return parts.join(QStringLiteral("  ·  "));
}

void ExportForm::proposeTarget()
{
    const QVector<const ProjectClip *> clips = chosenClips();
    const QString name = clips.size() == 1 ? QFileInfo(clips.first()->name()).completeBaseName()
                                           : m_project->displayName();
    const QDir folder(Preferences::folder(Preferences::ExportFolder));
    m_target->setText(QDir::toNativeSeparators(folder.filePath(name + tr("-cutout"))));
    takeSuffix();
}

void ExportForm::takeSuffix()
{
    QString path = m_target->text();
    for (const ExportFormat &known : m_formats) {
        if (!isSequence(known) && path.endsWith(known.suffix, Qt::CaseInsensitive))
            path.chop(known.suffix.size());
    }
    m_target->setText(isSequence(format()) ? path : path + format().suffix);
}

bool ExportForm::isComplete() const
{
    const bool lacksPicture = m_background->isEnabled()
        && m_background->currentData() == PictureBackground && m_picture.isEmpty();
    return m_clip->count() > 0 && !target().isEmpty() && !lacksPicture;
}

QString ExportForm::target() const
{
    return QDir::fromNativeSeparators(m_target->text().trimmed());
}

void ExportForm::connectChoices()
{
    const auto changed = QOverload<int>::of(&QComboBox::currentIndexChanged);
    connect(m_clip, changed, this, &ExportForm::proposeTarget);
    connect(m_format, changed, this, &ExportForm::takeSuffix);
    for (const QComboBox *box : {m_clip, m_format, m_background})
        connect(box, changed, this, &ExportForm::refresh);
    connect(m_matteOnly, &QCheckBox::toggled, this, &ExportForm::refresh);
    connect(m_target, &QLineEdit::textChanged, this, &ExportForm::refresh);
    const auto follow = [this] { followProject(); };
    for (const auto signal :
         {&Project::clipAdded, &Project::clipRemoved, &Project::clipMoved, &Project::clipChanged})
        connect(m_project, signal, this, follow);
    connect(m_project, &Project::reset, this, [this] {
        listClips(0);
        proposeTarget();
        refresh();
    });
}

void ExportForm::refresh()
{
    const bool isNeeded = !format().hasAlpha && !m_matteOnly->isChecked();
    const int kind = m_background->currentData().toInt();
    m_background->setEnabled(isNeeded);
    m_background->setToolTip(isNeeded ? QString() : tr("What is written needs no background."));
    m_colour->setVisible(kind == ColourBackground);
    m_colour->setEnabled(isNeeded);
    m_pictureButton->setVisible(kind == PictureBackground);
    m_pictureButton->setEnabled(isNeeded);
    m_pictureButton->setText(m_picture.isEmpty() ? tr("Choose...")
                                                 : QFileInfo(m_picture).fileName());
    Q_EMIT changed();
}

QStringList ExportForm::existing(const QVector<ExportItem> &items)
{
    QStringList existing;
    for (const ExportItem &item : items) {
        const QString output = item.settings.outputs.first();
        const QDir folder = QFileInfo(output).dir();
        if (!isSequencePath(output) && QFileInfo::exists(output))
            existing.append(QDir::toNativeSeparators(output));
        else if (isSequencePath(output) && folder.exists() && !folder.isEmpty())
            existing.append(QDir::toNativeSeparators(folder.path()));
    }
    return existing;
}

void ExportForm::chooseTarget()
{
    const QString path = isSequence(format())
        ? QFileDialog::getExistingDirectory(
            this, tr("Folder for the Pictures"), QFileInfo(m_target->text()).path())
        : QFileDialog::getSaveFileName(
            this,
            tr("Export"),
            m_target->text(),
            QStringLiteral("%1 (*%2)").arg(format().name, format().suffix),
            nullptr,
            QFileDialog::DontConfirmOverwrite);
    if (path.isEmpty())
        return;
    m_target->setText(QDir::toNativeSeparators(path));
    takeSuffix();
}

void ExportForm::chooseColour()
{
    ZkColorSelecter selecter(this);
    selecter.setCurrentColor(m_colour->color());
    connect(&selecter,
            &ZkColorSelecter::sigCurrentColorChanged,
            m_colour,
            &ZkColorToolButton::setColor);
    selecter.move(m_colour->mapToGlobal(QPoint(0, m_colour->height())));
    selecter.exec();
}

void ExportForm::choosePicture()
{
    const QString path =
        QFileDialog::getOpenFileName(this,
                                     tr("Background Picture"),
                                     Preferences::folder(Preferences::MediaFolder),
                                     tr("Pictures (*.png *.jpg *.jpeg *.bmp *.webp)"));
    if (!path.isEmpty())
        m_picture = path;
    refresh();
}

} // namespace zk::app
