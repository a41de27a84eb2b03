// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "attachments/CardDocuments.h"
#include "attachments/forms/PagedPanel.h"

class QTextEdit;

namespace tessaranth {

/// The documents of a card or work, one at a time, to be read. Text files can be dropped on it.
class DocumentPanel final : public PagedPanel {
    Q_OBJECT

public:
    explicit DocumentPanel(const CardContext& context, QWidget* parent = nullptr);

protected:
    void showCurrent() override;
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    explicit DocumentPanel(const CardContext& context, std::unique_ptr<CardDocuments> documents,
                           QWidget* parent);
    void addCommands();
    void New_Doc() { Edit_Doc(0); }
    void Edit_Doc(qint64 id);
    void keepReadable();
    void fitEmptyText();

    std::unique_ptr<CardDocuments> m_documents;
    QTextEdit* m_text = nullptr;
    QString m_instead; ///< said where no document is shown
};

} // namespace tessaranth
