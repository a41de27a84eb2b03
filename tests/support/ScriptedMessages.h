// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Messages.h"

#include <deque>

namespace tessaranth {

/// Answers from a script and keeps every word. A question nobody expected fails the test at once, an answer
/// nobody used when the object goes.
class ScriptedMessages final : public Messages {
public:
    ~ScriptedMessages() override;

    void willAnswer(Answer answer) { m_answers.push_back(answer); }
    /// From here on to every question for which the script has no answer: to whatever it offers first.
    void willAlwaysAgree() { m_agrees = true; }
    void willType(const QString& name) { m_names.push_back(name); }
    void willChoose(const QStringList& files) { m_files.push_back(files); }

    void tell(MessageIcon icon, const QString& title, const QString& text) override;
    Answer ask(const Question& question) override;
    QString inputName(const NameRequest& request) override;
    QStringList chooseFiles(const FileRequest& request) override;
    std::optional<QColor> chooseColour(const QString& title, const QColor& current) override;

    QStringList told; ///< texts of all messages, in order
    std::vector<MessageIcon> icons;
    std::vector<Question> asked;
    std::vector<NameRequest> nameRequests;
    std::vector<FileRequest> fileRequests;

private:
    bool m_agrees = false;
    std::deque<Answer> m_answers;
    std::deque<QString> m_names;
    std::deque<QStringList> m_files;
};

} // namespace tessaranth
