// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/cli/CliMessages.h"

#include <cstdio>
#include <iostream>
#ifdef Q_OS_WIN
#include <io.h>
#else
#include <unistd.h>
#endif

namespace tessaranth {

namespace {

bool inputIsTerminal() {
#ifdef Q_OS_WIN
    return _isatty(_fileno(stdin)) != 0;
#else
    return isatty(STDIN_FILENO) != 0;
#endif
}

void print(const QString& text) { std::cerr << text.toStdString() << '\n'; }

} // namespace

void CliMessages::tell(MessageIcon, const QString&, const QString& text) { print(text); }

Answer CliMessages::ask(const Question& question) {
    if (!m_yes && !inputIsTerminal())
        print(question.text); // what would have been done, and to how much
    const bool yes = m_yes || confirm(question.text);
    m_declined = m_declined || !yes;
    for (const Answer answer : question.buttons)
        if ((yes && (answer == Answer::Yes || answer == Answer::Ok)) ||
            (!yes && (answer == Answer::No || answer == Answer::Cancel)))
            return answer;
    return question.defaultButton;
}

bool CliMessages::confirm(const QString& question) {
    if (!inputIsTerminal())
        return false;
    std::cerr << question.toStdString() << " [y/N] " << std::flush;
    std::string line;
    std::getline(std::cin, line);
    return line == "y" || line == "Y" || line == "yes";
}

QString CliMessages::inputName(const NameRequest&) { return {}; }
QStringList CliMessages::chooseFiles(const FileRequest&) { return {}; }
std::optional<QColor> CliMessages::chooseColour(const QString&, const QColor&) { return std::nullopt; }

} // namespace tessaranth
