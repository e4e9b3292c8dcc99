// Peak memory of a whole cutout (segment, track, save, export the matte) against the length of the clip.
//   zk_tracking_memory_bench [SHORT LONG [WxH]]      default 200 2000 1920x1080
// Draws the sample clip in both lengths into a temporary folder and runs zkstudio on each.
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QStringList>
#include <QTemporaryDir>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <vector>

namespace {

constexpr double kibPerMib = 1024;

// Peak resident memory of the finished process in MiB; negative when it failed.
double run(const QStringList &arguments)
{
    std::vector<QByteArray> texts {ZKSTUDIO_PROGRAM};
    for (const QString &argument : arguments)
        texts.push_back(QFile::encodeName(argument));
    std::vector<char *> pointers;
    pointers.reserve(texts.size() + 1);
    for (QByteArray &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        execv(pointers.front(), pointers.data());
        _exit(127);
    }
    int status = 0;
    rusage usage {};
    wait4(child, &status, 0, &usage);
    return status == 0 ? usage.ru_maxrss / kibPerMib : -1;
}

double measure(int frames, const QString &size)
{
    const QTemporaryDir folder;
    const auto file = [&folder](const char *name) {
        return folder.filePath(QString::fromLatin1(name));
    };
    if (run({QStringLiteral("sample"),
             QStringLiteral("--frames"),
             QString::number(frames),
             QStringLiteral("--size"),
             size,
             folder.path()})
        < 0)
        return -1;
    QElapsedTimer timer;
    timer.start();
    const double peak = run({QStringLiteral("cutout"),
                             file("sample.mkv"),
                             QStringLiteral("--strokes"),
                             file("strokes.json"),
                             QStringLiteral("--library"),
                             file("library"),
                             QStringLiteral("--matte"),
                             QStringLiteral("-o"),
                             file("matte.mkv")});
    std::printf("%6d frames  peak %8.1f MiB  %7.3f s a frame\n",
                frames,
                peak,
                timer.elapsed() / 1000.0 / frames);
    std::fflush(stdout);
    return peak;
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const QString size = arguments.value(3, QStringLiteral("1920x1080"));
    const double small = measure(arguments.value(1, QStringLiteral("200")).toInt(), size);
    const double large = measure(arguments.value(2, QStringLiteral("2000")).toInt(), size);
    if (small < 0 || large < 0)
        return 1;
    std::printf("growth %.1f MiB\n", large - small);
    return 0;
}
