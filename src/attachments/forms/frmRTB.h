// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "attachments/CardDocuments.h"
#include "widgets/FormContext.h"

#include <QDialog>
#include <QHash>
#include <functional>

class QAction;
class QComboBox;
class QLabel;
class QTextCharFormat;
class QToolBar;

namespace tessaranth {

class RichTextEdit;

/// The editor of a card's document, or of the long description of a work.
class frmRTB final : public QDialog {
    Q_OBJECT

public:
    enum class Mode { Doc, Descr };

    /// Stores the text of a description; its document, or 0 when that failed, which has been told.
    using Writer = std::function<qint64(const QByteArray& rtf)>;

    /// `document` 0: a new one. In the mode Descr the document is the work's description, there or not yet,
    /// and `write` stores it.
    frmRTB(const FormContext& context, const CardOwner& owner, Mode mode, qint64 document,
           QWidget* parent = nullptr, Writer write = {});

    qint64 document() const { return m_document; } ///< as saved; 0 while it never was
    void reject() override;

private:
    void buildUi();
    QToolBar* buildToolBar();
    void addFontFields(QToolBar* bar);
    void load();
    void showText(const QByteArray& rtf);
    void startEmpty();
    QString caption();
    bool save();
    bool settled();
    void makeNew();
    void openFile();
    void setFormat(const QString& name, const std::function<void(QTextCharFormat&)>& change);
    void setAlignment(const QString& name, Qt::Alignment alignment);
    void chooseColour();
    void followFormat();
    void followUndo();
    void enable();

    FormContext m_context;
    CardOwner m_owner;
    CardDocuments m_documents;
    Mode m_mode;
    Writer m_write;
    qint64 m_document;
    QString m_title;      ///< of the document as stored
    bool m_saved = false; ///< something was, since the window opened
    RichTextEdit* m_edit = nullptr;
    QHash<QString, QAction*> m_actions;
    QComboBox* m_font = nullptr;
    QComboBox* m_size = nullptr;
    QLabel* m_note = nullptr;
};

} // namespace tessaranth
