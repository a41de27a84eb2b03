// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/Kills.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QRandomGenerator>
#include <QTest>
#include <atomic>
#include <mutex>
#include <thread>

namespace tessaranth {

namespace {

constexpr int lanes = 2; ///< programs running at the same time

quint32 seed() {
    static const quint32 chosen = [] {
        const QByteArray given = qgetenv("TESSARANTH_SEED");
        const quint32 number = given.isEmpty() ? QRandomGenerator::global()->generate() : given.toUInt();
        qInfo("TESSARANTH_SEED=%u repeats these points", number);
        return number;
    }();
    return chosen;
}

int share(int kills) {
    // Under the sanitizer every run takes many times as long, and a third of the points says as much.
#ifdef __SANITIZE_ADDRESS__
    constexpr int usual = 80;
#else
    constexpr int usual = 250;
#endif
    const QByteArray given = qgetenv("TESSARANTH_KILLS");
    return qMax(3, kills * (given.isEmpty() ? usual : given.toInt()) / 1000);
}

void inLanes(const std::function<void()>& work) {
    std::vector<std::thread> threads;
    for (int lane = 0; lane < lanes; ++lane)
        threads.emplace_back(work);
    for (std::thread& thread : threads)
        thread.join();
}

void begin(QProcess& process, const KillOperation& operation) {
    process.start();
    process.waitForStarted();
    if (operation.saysWhenItBegins)
        process.waitForReadyRead(60000);
}

bool hasSucceeded(const QProcess& process) {
    return process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

/// With as many programs at work as later.
qint64 timeOfWholeRun(const KillOperation& operation) {
    std::atomic<qint64> longest = 0;
    inLanes([&] {
        QProcess process;
        const auto place = operation.prepare(process);
        begin(process, operation);
        QElapsedTimer timer;
        timer.start();
        process.waitForFinished(60000);
        if (hasSucceeded(process))
            longest = std::max<qint64>(longest, timer.nsecsElapsed() / 1000);
        else
            qWarning("%s", process.readAllStandardError().constData());
    });
    return longest;
}

/// Nothing for a run that was quicker than its kill.
std::optional<Left> killOnce(const KillOperation& operation, qint64 delay) {
    QProcess process;
    const auto inspect = operation.prepare(process);
    begin(process, operation);
    std::this_thread::sleep_for(std::chrono::microseconds(delay));
    process.kill();
    process.waitForFinished();
    if (hasSucceeded(process))
        return std::nullopt;
    require(process.exitStatus() == QProcess::CrashExit, "failed before its kill");
    return inspect();
}

} // namespace

KillCount killAtRandom(const KillOperation& operation, quint32 index) {
    KillCount count;
    count.wanted = share(operation.kills);
    count.whole = timeOfWholeRun(operation);
    std::mutex mutex;
    std::atomic<int> next = 0;
    std::atomic<int> killed = 0;
    inLanes([&] {
        for (int i = next++; i < 3 * count.wanted && killed < count.wanted; i = next++) {
            // A point of its own within the i-th part of the run, so that no part goes without one.
            QRandomGenerator random({seed(), index, quint32(i)});
            const double at = (i % count.wanted + random.generateDouble()) / count.wanted;
            const auto delay = qint64(at * double(count.whole));
            try {
                const std::optional<Left> left = killOnce(operation, delay);
                const std::lock_guard guard(mutex);
                if (left) {
                    ++killed;
                    ++count.left[*left];
                }
            } catch (const KillFailure& failure) {
                const std::lock_guard guard(mutex);
                count.failures << QStringLiteral("%1, killed after %2 us: %3")
                                      .arg(QLatin1String(operation.name))
                                      .arg(delay)
                                      .arg(failure.text);
            }
        }
    });
    count.killed = killed;
    return count;
}

void testKills(const KillOperation& operation, quint32 index) {
    KillCount count = killAtRandom(operation, index);
    QVERIFY2(count.whole > 0, "the operation fails without a kill");
    qInfo("%s, %lld ms: killed %d times; left as before %d, between %d, after %d", operation.name,
          count.whole / 1000, count.killed, count.left[Left::Before], count.left[Left::Between],
          count.left[Left::After]);
    QVERIFY2(count.failures.isEmpty(), qPrintable(count.failures.join('\n')));
    QVERIFY(count.killed >= count.wanted);
}

} // namespace tessaranth
