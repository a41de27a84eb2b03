// SPDX-License-Identifier: GPL-3.0-or-later
//   tessaranth-bench generate N FILE [SEED]
//   tessaranth-bench run FILE FOLDER [REPEAT]     FOLDER: an application folder, such as a copy of the
//   shipped files
#include "Generator.h"
#include "Runner.h"
#include "platform/Errors.h"

#ifdef TESSARANTH_BENCH_MODEL
#include "widgets/OffscreenLog.h"

#include <QApplication>
using Application = QApplication; // windows are measured too
#else
#include <QGuiApplication>
using Application = QGuiApplication;
#endif
#include <cstdio>

int main(int argc, char** argv) {
    // Icons need a platform, measuring needs no display.
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const Application application(argc, argv);
#ifdef TESSARANTH_BENCH_MODEL
    tessaranth::hideOffscreenWarnings();
#endif
    const QStringList words = QGuiApplication::arguments().mid(1);
    try {
        if (words.size() >= 3 && words[0] == QLatin1String("generate")) {
            tessaranth::generateCatalog(words[2], words[1].toInt(),
                                        words.value(3, QStringLiteral("1")).toUInt());
            return 0;
        }
        if (words.size() >= 3 && words[0] == QLatin1String("run"))
            return tessaranth::runBench(words[1], words[2], words.value(3, QStringLiteral("5")).toInt());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    std::fprintf(stderr, "usage: tessaranth-bench generate N FILE [SEED] | run FILE FOLDER [REPEAT]\n");
    return 2;
}
