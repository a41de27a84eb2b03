// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Programs.h"

#include <QFile>
#include <QFileInfo>
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

namespace {

const QStringList runnableSuffixes =
    QStringLiteral(
        "action ahk apk app appimage appref-ms bash bat bin chm cmd com command cpl crx csh deb "
        "desktop dll dmg dylib elf exe fish flatpakref gadget hta inf jar jnlp jse js kdelnk ksh lnk "
        "lua mjs mpkg msc msi msix msp mst out perl php pif pkg pl prg ps1 psm1 py pyc pyw rb reg "
        "rpm run scf scpt scr sct service sh shb snap so tcl terminal url vb vbe vbs vbscript "
        "webloc website workflow ws wsc wsf wsh xpi zsh")
        .split(u' ');

/// Blanks and points at the end are no part of a name on every system.
QString withoutEnd(QString name) {
    while (name.endsWith(u' ') || name.endsWith(u'.'))
        name.chop(1);
    return name;
}

bool beginsAsProgram(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    constexpr qint64 enough = 4096;
    const QByteArray head = file.read(enough);
    for (const char* mark : {"#!",
                             "\x7F"
                             "ELF",
                             "MZ", "\xCA\xFE\xBA\xBE", "\xCF\xFA\xED\xFE", "\xCE\xFA\xED\xFE"})
        if (head.startsWith(mark))
            return true;
    return head.contains("[Desktop Entry]") || head.contains("[InternetShortcut]");
}

} // namespace

bool wouldRun(const QString& path) {
    const QFileInfo file(path);
    for (const QString& name : {file.fileName(), QFileInfo(file.canonicalFilePath()).fileName()})
        if (runnableSuffixes.contains(QFileInfo(withoutEnd(name.toLower())).suffix()))
            return true;
    return beginsAsProgram(path);
}

} // namespace tessaranth
