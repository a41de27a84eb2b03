// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringList>
#include <functional>
#include <map>

class QProcess;

namespace tessaranth {

/// Thrown by whoever looks at what a kill has left.
struct KillFailure {
    QString text;
};

inline void require(bool condition, const QString& text) {
    if (!condition)
        throw KillFailure{text};
}

/// What a kill left of an operation.
enum class Left { Before, Between, After };

/// A program that writes, to be killed at random points of its run.
struct KillOperation {
    const char* name;
    int kills; ///< of the 1,000 of a whole run
    /// Makes a place of its own and says what is to run in it; the function that it returns looks at what a
    /// kill has left there, throws KillFailure when that is not whole, and keeps the place alive.
    std::function<std::function<Left()>(QProcess&)> prepare;
    /// The program prints a line when it begins what counts; the points lie behind that.
    bool saysWhenItBegins = false;
};

struct KillCount {
    qint64 whole = 0; ///< microseconds of a run without a kill; 0 when it fails
    int wanted = 0;
    int killed = 0;
    std::map<Left, int> left;
    QStringList failures;
};

/// Kills at points spread over the measured time of a whole run, several programs at a time; a run that ended
/// before its kill does not count. A quarter of the kills, or as many of 1,000 as TESSARANTH_KILLS says.
/// TESSARANTH_SEED repeats the points.
KillCount killAtRandom(const KillOperation& operation, quint32 index);
/// Runs it and fails the test when something was left that is not whole.
void testKills(const KillOperation& operation, quint32 index);

} // namespace tessaranth
