#include "walk/Supervisor.h"

#include "support/Search.h"
#include "walk/Shrink.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <csignal>
#include <iostream>

#include <sys/prctl.h>

namespace {

using namespace std::chrono_literals;

constexpr auto shortestSearch = 240s;
/// Beside the walking: starts, ends, judgements, on a busy machine.
constexpr auto besideWalking = 240s;

/// How a walk ended.
struct Outcome {
    QString brokenRule; ///< empty: none
    std::chrono::milliseconds time{0};
};

class Supervisor {
public:
    Supervisor(QString program, QStringList arguments)
        : program_(std::move(program)), arguments_(std::move(arguments)) {}

    int Run() {
        const Outcome first = Walk({}, search::Length(60s) + besideWalking, true);
        if (first.brokenRule.isEmpty())
            return 0;
        const Course course = ReadCourse(Place("notes"));
        std::cout << "Broken: " << first.brokenRule.toStdString() << ", by " << course.size()
                  << " steps. Looking for a shorter course." << std::endl;
        Tell(Shortest(course, first));
        return 1;
    }

private:
    QString Place(const char* name) const { return folder_.filePath(name); }

    /// The longer a walk stands still, the longer it takes to see that.
    Course Shortest(const Course& course, const Outcome& first) {
        const QDeadlineTimer end(std::max<std::chrono::milliseconds>(shortestSearch, first.time));
        const auto fails = [&](const Course& part) {
            WriteCourse(Place("course"), part);
            const bool same =
                Walk(Place("course"), first.time + 60s, false).brokenRule == first.brokenRule;
            std::cout << (same ? "still, by " : "not by ") << part.size() << std::endl;
            return same;
        };
        return walk::Shrink(course, fails, [&end] { return end.hasExpired(); });
    }

    void Tell(const Course& course) const {
        const QString kept =
            QDir::current().absoluteFilePath(QFileInfo(program_).fileName() + ".course");
        WriteCourse(kept, course);
        std::cout << "The shortest course found, " << course.size() << " steps:\n";
        for (const Step& step : course)
            std::cout << "  " << Told(step) << '\n';
        std::cout << "To walk it again: " << walk::courseVariable << "=" << kept.toStdString()
                  << ' ' << program_.toStdString() << std::endl;
    }

    Outcome Walk(const QString& course, std::chrono::milliseconds limit, bool shown) const {
        for (const char* told : {"verdict", "notes"})
            QFile::remove(Place(told));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(walk::notesVariable, Place("notes"));
        environment.insert(walk::verdictVariable, Place("verdict"));
        if (!course.isEmpty())
            environment.insert(walk::courseVariable, course);
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        if (!shown) {
            process.setProcessChannelMode(QProcess::SeparateChannels);
            process.setStandardOutputFile(QProcess::nullDevice());
            process.setStandardErrorFile(QProcess::nullDevice());
        }
        const auto begin = std::chrono::steady_clock::now();
        process.start(program_, arguments_);
        const bool ended = process.waitForFinished(static_cast<int>(limit.count()));
        const QString rule = ended ? RuleOf(process) : QString("the walk comes to an end");
        process.kill();
        process.waitForFinished();
        return {rule, std::chrono::duration_cast<std::chrono::milliseconds>(
                          std::chrono::steady_clock::now() - begin)};
    }

    QString RuleOf(const QProcess& process) const {
        QFile verdict(Place("verdict"));
        if (verdict.open(QIODevice::ReadOnly))
            return QString::fromUtf8(verdict.readAll());
        if (process.exitStatus() == QProcess::CrashExit)
            return "no crash";
        return process.exitCode() == 0 ? QString() : QString("no test fails");
    }

    const QTemporaryDir folder_;
    const QString program_;
    const QStringList arguments_;
};

} // namespace

bool walk::IsToWalk() {
    const bool supervised = qEnvironmentVariableIsSet(notesVariable);
    if (supervised)
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    return supervised || qEnvironmentVariableIsSet(courseVariable);
}

int walk::Supervise(int argc, char* argv[]) {
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    return Supervisor(QFileInfo("/proc/self/exe").symLinkTarget(), arguments).Run();
}
