#include "ZkEditor.h"

#include "ZkExitCode.h"
#include "ZkMainWindow.h"
#include "ZkPreferences.h"

#include "ZkLanguage.h"
#include "ZkModelChoice.h"
#include "ZkWidgets.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QPalette>
#include <QSettings>
#include <QTimer>

#include <cstdio>

namespace zk::app {

namespace {

const char *const editorOptions[] = {"--library", "--preset-server", "--model"};

bool isLinux()
{
    return QSysInfo::kernelType() == QLatin1String("linux");
}

// What style sheets do not reach, such as the dialogs of Qt.
QPalette skinPalette()
{
    const auto color = [](int type) { return ZkSkinManager::instance()->color(type); };
    QPalette palette;
    palette.setColor(QPalette::Window, color(ZKSKIN::PanelBackground));
    palette.setColor(QPalette::Base, color(ZKSKIN::Field));
    palette.setColor(QPalette::AlternateBase, color(ZKSKIN::PanelBackground));
    palette.setColor(QPalette::Button, color(ZKSKIN::Raised));
    palette.setColor(QPalette::ToolTipBase, color(ZKSKIN::Raised));
    palette.setColor(QPalette::Highlight, color(ZKSKIN::Accent));
    palette.setColor(QPalette::HighlightedText, color(ZKSKIN::OnAccent));
    palette.setColor(QPalette::Link, color(ZKSKIN::Accent));
    for (const QPalette::ColorRole role : {QPalette::WindowText,
                                           QPalette::Text,
                                           QPalette::ButtonText,
                                           QPalette::ToolTipText,
                                           QPalette::BrightText}) {
        palette.setColor(role, color(ZKSKIN::Text));
        palette.setColor(QPalette::Disabled, role, color(ZKSKIN::DisabledText));
    }
    palette.setColor(QPalette::PlaceholderText, color(ZKSKIN::DimText));
    return palette;
}

QIcon applicationIcon()
{
    QIcon icon;
    for (const int size : {16, 32, 48, 128, 256})
        icon.addFile(QStringLiteral(":/ZkSkin/icons/application%1.png").arg(size));
    return icon;
}

bool readModels(const QStringList &paths, EditorConfig *config)
{
    models::ModelChoice choice;
    for (const QString &path : paths) {
        QString error;
        if (!choice.add(path, &error)) {
            std::fprintf(stderr, "zkstudio: %s\n", qPrintable(error));
            return false;
        }
    }
    for (const engine::EngineRole role : engine::engineRoles) {
        if (choice.file(role).model)
            config->models.append(choice.file(role));
    }
    return true;
}

struct Arguments
{
    QStringList files;
    QStringList models;
};

Arguments parse(const QStringList &arguments, EditorConfig *config)
{
    QCommandLineParser parser;
    parser.addOption({QStringLiteral("library"), QString(), QStringLiteral("folder")});
    parser.addOption({QStringLiteral("preset-server"), QString(), QStringLiteral("address")});
    parser.addOption({QStringLiteral("model"), QString(), QStringLiteral("file")});
    parser.process(arguments);
    config->libraryFolder = parser.value(QStringLiteral("library"));
    config->presetServer = QUrl(parser.value(QStringLiteral("preset-server")), QUrl::StrictMode);
    return {parser.positionalArguments(), parser.values(QStringLiteral("model"))};
}

} // namespace

bool isEditorStart(const QStringList &arguments)
{
    if (arguments.isEmpty())
        return true;
    for (const char *option : editorOptions) {
        if (arguments.first().startsWith(QLatin1String(option)))
            return true;
    }
    return QFileInfo(arguments.first()).isFile();
}

bool prepareEditor(QString *error)
{
    const QString platform = qEnvironmentVariable("QT_QPA_PLATFORM");
    const bool hasWayland = !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
    const bool hasX = !qEnvironmentVariableIsEmpty("DISPLAY");
    if (isLinux() && platform.isEmpty() && !hasX && !hasWayland) {
        *error = QStringLiteral("there is no display to open a window on");
        return false;
    }
    // Top-level overlays cannot be placed under Wayland, but they can be through XWayland.
    const bool isWayland =
        platform.isEmpty() ? hasWayland : platform.startsWith(QLatin1String("wayland"));
    if (isLinux() && isWayland)
        qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    // The windows over the player have widgets for parents, whose other children stay what they are.
    QApplication::setAttribute(Qt::AA_DontCreateNativeWidgetSiblings);
    QApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::PassThrough);
    return true;
}

int runEditor(QApplication &application, const QStringList &arguments)
{
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setPalette(skinPalette());
    QApplication::setWindowIcon(applicationIcon());
    EditorConfig config;
    const Arguments given = parse(arguments, &config);
    if (!readModels(given.models, &config))
        return int(ExitCode::BadModel);
    QSettings settings;
    Language language(&settings);
    language.apply();
    QString error;
    if (Preferences::areAnalyticsAllowed() && !Preferences::allowAnalytics(true, &error))
        std::fprintf(stderr, "zkstudio: %s\n", qPrintable(error));
    MainWindow window(config, &language);
    window.show();
    QTimer::singleShot(0, &window, [&window, files = given.files] {
        window.offerRecovery();
        window.openFiles(files);
    });
    return application.exec();
}

} // namespace zk::app
