// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/ScriptedMessages.h"

#include <QTest>

namespace tessaranth {

namespace {

template<typename T>
T take(std::deque<T>& script, const QString& what, T otherwise) {
    if (script.empty()) {
        QTest::qFail(qPrintable("unexpected question: " + what), __FILE__, __LINE__);
        return otherwise;
    }
    T answer = script.front();
    script.pop_front();
    return answer;
}

} // namespace

ScriptedMessages::~ScriptedMessages() {
    if (!m_answers.empty() || !m_names.empty() || !m_files.empty())
        QTest::qFail("an answer of the script was never asked for", __FILE__, __LINE__);
}

void ScriptedMessages::tell(MessageIcon icon, const QString&, const QString& text) {
    icons.push_back(icon);
    told.push_back(text);
}

Answer ScriptedMessages::ask(const Question& question) {
    asked.push_back(question);
    if (m_agrees && m_answers.empty())
        return question.buttons.front();
    return take(m_answers, question.text, Answer::Cancel);
}

QString ScriptedMessages::inputName(const NameRequest& request) {
    nameRequests.push_back(request);
    return take(m_names, request.title, QString());
}

QStringList ScriptedMessages::chooseFiles(const FileRequest& request) {
    fileRequests.push_back(request);
    return take(m_files, request.title, QStringList());
}

std::optional<QColor> ScriptedMessages::chooseColour(const QString& title, const QColor&) {
    QTest::qFail(qPrintable("unexpected colour question: " + title), __FILE__, __LINE__);
    return std::nullopt;
}

} // namespace tessaranth
