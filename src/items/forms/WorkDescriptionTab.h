// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/WorkDescription.h"

#include <QWidget>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace tessaranth {

class Session;

/// The two descriptions of a work: the text in its row, and the long one that is a document.
class WorkDescriptionTab final : public QWidget {
    Q_OBJECT

public:
    explicit WorkDescriptionTab(Session& session, QWidget* parent = nullptr);

    void show(qint64 work, const QString& description);
    QString description() const;
    bool isDocumentChanged() const;
    /// Writes the long description if it was changed; false when that failed or was declined.
    bool saveDocument(qint64 work);

private:
    void showDocument(qint64 work);
    bool remove();

    Session& m_session;
    qint64 m_work = 0;
    WorkDescription::Text m_stored;
    QPlainTextEdit* m_description = nullptr;
    QPlainTextEdit* m_document = nullptr;
    QLabel* m_note = nullptr;
    QPushButton* m_remove = nullptr;
};

} // namespace tessaranth
