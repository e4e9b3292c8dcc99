#include "ZkSettingsDialog.h"

#include "ZkPreferences.h"
#include "ZkPrompts.h"

#include "ZkLanguage.h"
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

} // namespace

SettingsDialog::SettingsDialog(Language *language, QWidget *parent)
    : QDialog(parent)
    , m_language(language)
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
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &SettingsDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &SettingsDialog::reject);
    fill();
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
    QString error;
    if (m_analytics->isChecked() != Preferences::areAnalyticsAllowed()
        && !Preferences::allowAnalytics(m_analytics->isChecked(), &error))
        warnUser(this, tr("The file cannot be written"), error);
    m_language->choose(m_languages->currentData().toString());
    QDialog::accept();
}

} // namespace zk::app
