// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Programs.h"

#include <QProcess>
#include <QStandardPaths>

namespace tessaranth {

QStringList programCandidates(Program program) {
    struct Row {
        Program program;
        const char* lines;
    };
#ifdef Q_OS_WIN
    constexpr Row rows[] = {{Program::Volume, "sndvol.exe|sndvol32.exe"},
                            {Program::TextEditor, "notepad.exe"},
                            {Program::RichTextEditor, "write.exe|winword.exe|soffice.exe --writer"},
                            {Program::Browser, "explorer.exe about:blank"}};
#elif defined(Q_OS_MACOS)
    constexpr Row rows[] = {{Program::Volume, "open -b com.apple.systempreferences"},
                            {Program::TextEditor, "open -a TextEdit"},
                            {Program::RichTextEditor, "open -a TextEdit"},
                            {Program::Browser, "open about:blank"}};
#else
    constexpr Row rows[] = {
        {Program::Volume, "pavucontrol|pavucontrol-qt|gnome-control-center sound|kcmshell5 kcm_pulseaudio|"
                          "systemsettings kcm_pulseaudio|mate-volume-control|cinnamon-settings sound|"
                          "xfce4-mixer|alsamixergui"},
        {Program::TextEditor, "gnome-text-editor|gedit|kate|kwrite|xed|pluma|mousepad|featherpad|"
                              "leafpad|l3afpad|gvim"},
        {Program::RichTextEditor, "libreoffice --writer|soffice --writer|abiword|calligrawords"},
        {Program::Browser, "x-www-browser about:blank|sensible-browser about:blank|firefox about:blank|"
                           "firefox-esr about:blank|chromium about:blank|epiphany about:blank|"
                           "falkon about:blank"}};
#endif
    for (const Row& row : rows)
        if (row.program == program)
            return QString::fromLatin1(row.lines).split(u'|');
    return {};
}

QString startFirst(const QStringList& commandLines) {
    for (const QString& line : commandLines) {
        QStringList arguments = QProcess::splitCommand(line);
        QString name = arguments.takeFirst();
        const QString file = QStandardPaths::findExecutable(name);
        if (!file.isEmpty() && QProcess::startDetached(file, arguments))
            return name;
    }
    return {};
}

} // namespace tessaranth
