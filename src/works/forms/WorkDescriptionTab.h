// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/FormContext.h"

#include <QWidget>
#include <functional>

class QPlainTextEdit;
class QPushButton;
class QTextEdit;

namespace tessaranth {

/// The two descriptions of a work: the text in its row, and the long one that is a document and has its own
/// editor.
class WorkDescriptionTab final : public QWidget {
    Q_OBJECT

public:
    /// `workToDescribe` saves a work that is new first; 0: it could not be.
    WorkDescriptionTab(const FormContext& context, std::function<qint64()> workToDescribe,
                       QWidget* parent = nullptr);

    void show(qint64 work, const QString& description);
    QString description() const;

private:
    void showDocument(qint64 work);
    void edit();
    void remove();

    FormContext m_context;
    std::function<qint64()> m_workToDescribe;
    qint64 m_work = 0;
    QPlainTextEdit* m_description = nullptr;
    QTextEdit* m_document = nullptr;
    QPushButton* m_remove = nullptr;
};

} // namespace tessaranth
