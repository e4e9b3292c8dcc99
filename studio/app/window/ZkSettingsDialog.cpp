#include "ZkSettingsDialog.h"

#include "ZkBusyCursor.h"
#include "ZkModelField.h"
#include "ZkPreferences.h"
#include "ZkPrompts.h"

#include "ZkLanguage.h"
#include "ZkModelChoice.h"
#include "ZkModelTexts.h"
#include "ZkWidgets.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>

namespace zk::app {

namespace {

constexpr int longestInterval = 3600; // seconds
constexpr int leastCharacters = 72; // of a line: paths and what is said of them

} // namespace

SettingsDialog::SettingsDialog(Language *language, models::ModelChoice *models, QWidget *parent)
    : QDialog(parent)
    , m_language(language)
    , m_models(models)
    , m_languages(new ZkComboBox(this))
    , m_autosave(new QSpinBox(this))
    , m_analytics(new QCheckBox(tr("Note which functions I use, in a file on this computer"), this))
{
    setObjectName(QStringLiteral("SettingsDialog"));
    setWindowTitle(tr("Settings"));
    m_languages->setObjectName(QStringLiteral("SettingsDialog_Language"));
    m_autosave->setObjectName(QStringLiteral("SettingsDialog_Autosave"));
    m_analytics->setObjectName(QStringLiteral("SettingsDialog_Analytics"));
    m_autosave->setRange(0, longestInterval);
    m_autosave->setSingleStep(10);
    m_autosave->setSuffix(tr(" s"));
    m_autosave->setSpecialValueText(tr("Never"));
    auto *file = new QLabel(QDir::toNativeSeparators(Preferences::analyticsFile()), this);
    file->setObjectName(QStringLiteral("FactName"));
    file->setTextInteractionFlags(Qt::TextSelectableByMouse);
    file->setWordWrap(true);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto *form = new QFormLayout(this);
    form->setContentsMargins(20, 18, 20, 16);
    form->setHorizontalSpacing(16);
    form->setVerticalSpacing(12);
    form->addRow(tr("&Language"), m_languages);
    form->addRow(tr("&Autosave every"), m_autosave);
    form->addRow(m_analytics);
    form->addRow(file);
    addModels(form);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &SettingsDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &SettingsDialog::reject);
    fill();
    setMinimumWidth(leastCharacters * fontMetrics().averageCharWidth());
    ensurePolished();
    resize(sizeHint().expandedTo(minimumSize()));
    fitHeight();
}

// Texts that wrap need a height that depends on the width, which dialogs do not see to themselves.
void SettingsDialog::fitHeight()
{
    layout()->activate();
    const int needed = layout()->totalHeightForWidth(width());
    setMinimumHeight(needed);
    resize(width(), qMax(height(), needed));
}

void SettingsDialog::addModels(QFormLayout *form)
{
    auto *hint = new QLabel(tr("Networks (ONNX files) can take the place of the built-in engine. "
                               "Workspaces use them from "
                               "the next time that they are opened."),
                            this);
    hint->setObjectName(QStringLiteral("Hint"));
    hint->setWordWrap(true);
    form->addRow(hint);
    const BusyCursor busy; // the files may still be being read
    for (const engine::EngineRole role : engine::engineRoles) {
        auto *field = new ModelField(role, m_models->file(role), this);
        form->addRow(models::ModelTexts::role(role), field);
        m_modelFields.append(field);
        connect(field, &ModelField::stateChanged, this, &SettingsDialog::fitHeight);
    }
}

// Those that the command line has given are not the settings' until they are changed here.
void SettingsDialog::keepModels() const
{
    for (const ModelField *field : m_modelFields) {
        if (field->file().path == m_models->path(field->role()))
            continue;
        Preferences::setModelFile(field->role(), field->file().path);
        m_models->choose(field->role(), field->file());
    }
}

void SettingsDialog::fill()
{
    const QVector<Language::Choice> choices = Language::choices();
    for (const Language::Choice &choice : choices)
        m_languages->addItem(choice.name, choice.code);
    m_languages->setCurrentIndex(qMax(0, m_languages->findData(m_language->chosen())));
    m_autosave->setValue(Preferences::autosaveSeconds());
    m_analytics->setChecked(Preferences::areAnalyticsAllowed());
}

void SettingsDialog::accept()
{
    Preferences::setAutosaveSeconds(m_autosave->value());
    keepModels();
    QString error;
    if (m_analytics->isChecked() != Preferences::areAnalyticsAllowed()
        && !Preferences::allowAnalytics(m_analytics->isChecked(), &error))
        warnUser(this, tr("The file cannot be written"), error);
    m_language->choose(m_languages->currentData().toString());
    QDialog::accept();
}

} // namespace zk::app
