#include "ZkClipProperties.h"

#include "ZkActionButton.h"
#include "ZkFormat.h"
#include "ZkWindowActions.h"

#include "ZkPresetNames.h"
#include "project/ZkProject.h"
#include "segmentation/ZkStudioSmartKeyingService.h"
#include "timeline/ZkStudioEffect.h"
#include "timeline/ZkStudioEffectList.h"
#include "timeline/ZkStudioTimeline.h"

#include <QCheckBox>
#include <QDir>
#include <QEvent>
#include <QFormLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace zk::app {

using datamodel::MediaEntry;
using datamodel::Project;
using datamodel::ProjectClip;

namespace {

QLabel *createTitle(const QString &name, QWidget *parent)
{
    auto *title = new QLabel(parent);
    title->setObjectName(name);
    title->setProperty("isTitle", true);
    return title;
}

QString lookName(const ZkStudioEffect &effect)
{
    const QString name = effect.look().name;
    return name.isEmpty() ? ClipProperties::tr("Plain cutout") : presetName(name);
}

} // namespace

ClipProperties::ClipProperties(Project *project, const WindowActions &actions, QWidget *parent)
    : QWidget(parent)
    , m_project(project)
    , m_hint(new QLabel(this))
    , m_facts(createFacts(actions))
    , m_cutout(createCutout(actions))
    , m_erasing(createErasing(actions))
{
    setObjectName(QStringLiteral("ClipProperties"));
    m_hint->setObjectName(QStringLiteral("Hint"));
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setWordWrap(true);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(12, 10, 12, 10);
    column->setSpacing(18);
    column->addWidget(m_hint, 1);
    column->addWidget(m_facts);
    column->addWidget(m_cutout);
    column->addWidget(m_erasing);
    column->addStretch();
    connect(project, &Project::currentClipChanged, this, &ClipProperties::refresh);
    connect(project, &Project::clipChanged, this, &ClipProperties::refresh);
    connect(project, &Project::mediaChanged, this, &ClipProperties::refresh);
    connect(project, &Project::reset, this, &ClipProperties::refresh);
    retranslate();
}

QWidget *ClipProperties::createFacts(const WindowActions &actions)
{
    auto *page = new QWidget(this);
    m_factsTitle = createTitle(QStringLiteral("ClipProperties_FactsTitle"), page);
    auto *form = new QFormLayout;
    form->setContentsMargins(0, 0, 0, 0);
    form->setHorizontalSpacing(14);
    form->setVerticalSpacing(5);
    for (int fact = 0; fact < FactCount; ++fact) {
        m_names[fact] = new QLabel(page);
        m_names[fact]->setObjectName(QStringLiteral("FactName"));
        m_values[fact] = new QLabel(page);
        m_values[fact]->setObjectName(QStringLiteral("ClipProperties_Fact%1").arg(fact));
        m_values[fact]->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        form->addRow(m_names[fact], m_values[fact]);
    }
    m_problem = new QLabel(page);
    m_problem->setObjectName(QStringLiteral("ClipProperties_Problem"));
    m_problem->setWordWrap(true);
    m_relink = new ActionButton(actions.action(ActionId::RelinkClip), page);
    m_relink->setObjectName(QStringLiteral("ClipProperties_Relink"));
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(m_factsTitle);
    column->addLayout(form);
    column->addWidget(m_problem);
    column->addWidget(m_relink);
    return page;
}

QWidget *ClipProperties::createCutout(const WindowActions &actions)
{
    auto *page = new QWidget(this);
    m_cutoutTitle = createTitle(QStringLiteral("ClipProperties_CutoutTitle"), page);
    m_look = new QLabel(page);
    m_look->setObjectName(QStringLiteral("ClipProperties_Look"));
    m_look->setWordWrap(true);
    m_isOn = new QCheckBox(page);
    m_isOn->setObjectName(QStringLiteral("ClipProperties_CutoutOn"));
    m_isOn->setFocusPolicy(Qt::TabFocus);
    auto *open =
        new ActionButton(actions.action(ActionId::SmartCutout), page, ActionButton::Rank::Primary);
    open->setObjectName(QStringLiteral("ClipProperties_SmartCutout"));
    auto *remove = new ActionButton(actions.action(ActionId::RemoveCutout), page);
    remove->setObjectName(QStringLiteral("ClipProperties_RemoveCutout"));
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    for (QWidget *widget : {static_cast<QWidget *>(m_cutoutTitle),
                            static_cast<QWidget *>(m_look),
                            static_cast<QWidget *>(m_isOn),
                            static_cast<QWidget *>(open),
                            static_cast<QWidget *>(remove)})
        column->addWidget(widget);
    connect(m_isOn, &QCheckBox::toggled, this, &ClipProperties::switchCutout);
    return page;
}

QWidget *ClipProperties::createErasing(const WindowActions &actions)
{
    auto *page = new QWidget(this);
    m_erasingTitle = createTitle(QStringLiteral("ClipProperties_ErasingTitle"), page);
    m_selection = new QLabel(page);
    m_selection->setObjectName(QStringLiteral("ClipProperties_Selection"));
    m_selection->setWordWrap(true);
    auto *open = new ActionButton(actions.action(ActionId::AIErase), page);
    open->setObjectName(QStringLiteral("ClipProperties_AIErase"));
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(8);
    column->addWidget(m_erasingTitle);
    column->addWidget(m_selection);
    column->addWidget(open);
    return page;
}

void ClipProperties::refresh()
{
    const ProjectClip *clip = m_project->currentClip();
    m_hint->setVisible(!clip);
    m_facts->setVisible(clip);
    m_cutout->setVisible(clip);
    m_erasing->setVisible(clip);
    if (!clip)
        return;
    showFacts(*clip);
    showCutout(*clip);
    const bool isSelected =
        !clip->clip()->studioService(ZKSMARTKEYING::AIErasing)->segments().isEmpty();
    m_selection->setText(isSelected ? tr("Objects are selected to be erased.")
                                    : tr("Nothing is selected to be erased."));
}

void ClipProperties::setFact(Fact fact, const QString &text)
{
    m_values[fact]->setText(text);
    m_values[fact]->setToolTip(text);
}

void ClipProperties::showFacts(const ProjectClip &clip)
{
    const media::MediaInfo &media = clip.clip()->media();
    const qint64 frames = clip.clip()->frameCount();
    setFact(NameFact, clip.name());
    setFact(SizeFact, sizeText(media.size));
    setFact(RateFact, rateText(media));
    setFact(
        LengthFact,
        tr("%1 (%n frame(s))", nullptr, int(frames)).arg(durationText(frames, media.frameRate())));
    setFact(SoundFact, media.hasAudio ? tr("Yes") : tr("No"));
    setFact(PlaceFact, QDir::toNativeSeparators(QFileInfo(media.path).absolutePath()));
    const MediaEntry *entry = m_project->findMedia(clip.mediaId());
    m_problem->setText(entry ? entry->problem : QString());
    m_problem->setVisible(!m_problem->text().isEmpty());
    m_relink->setVisible(clip.isOffline());
    for (const Fact fact : {RateFact, LengthFact, SoundFact}) {
        m_names[fact]->setVisible(!media.isStill);
        m_values[fact]->setVisible(!media.isStill);
    }
}

void ClipProperties::showCutout(const ProjectClip &clip)
{
    const ZkStudioEffect *effect = clip.clip()->studioEffects()->cutoutEffect();
    m_look->setText(effect ? tr("Look: %1").arg(lookName(*effect))
                           : tr("Nothing is cut out of this clip yet."));
    m_isOn->setVisible(effect);
    const QSignalBlocker blocker(m_isOn);
    m_isOn->setChecked(effect && effect->isEnabled());
}

void ClipProperties::switchCutout(bool on)
{
    const ProjectClip *clip = m_project->currentClip();
    ZkStudioEffect *effect = clip ? clip->clip()->studioEffects()->cutoutEffect() : nullptr;
    if (effect)
        effect->setEnabled(on);
}

void ClipProperties::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

void ClipProperties::retranslate()
{
    const QString names[FactCount] = {
        tr("Name"), tr("Size"), tr("Rate"), tr("Length"), tr("Sound"), tr("Folder")};
    for (int fact = 0; fact < FactCount; ++fact)
        m_names[fact]->setText(names[fact]);
    m_hint->setText(tr("Choose a clip to see what it is."));
    m_factsTitle->setText(tr("Clip"));
    m_cutoutTitle->setText(tr("Smart Cutout"));
    m_isOn->setText(tr("Show the cutout"));
    m_erasingTitle->setText(tr("AI Erase"));
    refresh();
}

} // namespace zk::app
