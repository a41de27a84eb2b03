// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QColor>
#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace tessaranth {

enum class MessageIcon { Information, Warning, Critical, Question };
enum class Answer { Ok, Cancel, Yes, No };

/// A message box that wants an answer. Texts are shown as they stand.
struct Question {
    QString title;
    QString text;
    std::vector<Answer> buttons{Answer::Ok, Answer::Cancel};
    Answer defaultButton = Answer::Ok;
    MessageIcon icon = MessageIcon::Question;
};

/// The shared name input: a heading, one labelled line and a button that carries the action's name.
struct NameRequest {
    QString title;
    QString heading;
    QString label;
    QString button;
    QString iconKey;
    QString defaultText;
    int maxLength = 250; ///< characters the field accepts; 1 to 32767
};

/// A file or folder dialog. `folder` is where it opens; empty means the system's choice.
struct FileRequest {
    enum class Mode { Open, OpenMany, Save, Folder };
    Mode mode = Mode::Open;
    QString title;
    QString folder;
    QString fileName;         ///< proposed name, for Save
    QString filterName;       ///< caption of the filter, for example "Text file (*.txt)"
    QStringList patterns;     ///< for example "*.txt"
    QString defaultExtension; ///< with its dot, added to a name typed without one
};

/// The only way in which the program tells or asks its user something. The window shows dialogs, the
/// command line writes to stderr and answers from its flags, tests answer from a script and keep every word.
class Messages {
public:
    virtual ~Messages() = default;
    virtual void tell(MessageIcon icon, const QString& title, const QString& text) = 0;
    /// The button chosen; closing the box counts as Cancel, or as No where there is no Cancel.
    virtual Answer ask(const Question& question) = 0;
    /// The trimmed text, or an empty string when cancelled.
    virtual QString inputName(const NameRequest& request) = 0;
    /// Full paths chosen; empty when cancelled.
    virtual QStringList chooseFiles(const FileRequest& request) = 0;
    virtual std::optional<QColor> chooseColour(const QString& title, const QColor& current) = 0;

    void information(const QString& title, const QString& text) {
        tell(MessageIcon::Information, title, text);
    }
    void warning(const QString& title, const QString& text) { tell(MessageIcon::Warning, title, text); }
    void critical(const QString& title, const QString& text) { tell(MessageIcon::Critical, title, text); }
};

/// Title of the plain message boxes of start-up and of everything that has no title of its own.
inline const QString applicationTitle = QStringLiteral("Tessaranth");

} // namespace tessaranth
