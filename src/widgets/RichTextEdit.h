// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QHash>
#include <QTextEdit>

namespace tessaranth {

/// A text field whose contents are a document in Rich Text Format. What is pasted or dropped goes through the
/// format first, so that nothing is shown that would not be kept, and it knows by name what undoing undoes.
class RichTextEdit final : public QTextEdit {
    Q_OBJECT

public:
    explicit RichTextEdit(QWidget* parent = nullptr);

    /// Runs a change under the name that undoing it shows.
    template<typename Change>
    void change(const QString& name, const Change& what) {
        const QString before = std::exchange(m_action, name);
        what();
        m_action = before;
    }
    void cutSelection();
    void pasteClipboard();

    QString
    undoName() const; ///< "Typing", "Paste", "Drag Drop", "Delete", "Cut", ...; empty: nothing to undo
    QString redoName() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    QMimeData* createMimeDataFromSelection() const override;
    bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    QString m_action;            ///< what is being done now
    QHash<int, QString> m_names; ///< of the document's undo steps, by their number
};

} // namespace tessaranth
