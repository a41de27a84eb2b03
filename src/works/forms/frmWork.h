// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/forms/CardPanel.h"
#include "widgets/ChildWindow.h"
#include "works/WorkCard.h"

class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTreeView;

namespace tessaranth {

class CardBand;
class DocumentPanel;
class ItemListModel;
class SpecsView;

/// The card of a work: what is known of it, its description and documents, and the recordings that contain
/// it.
class frmWork final : public ChildWindow {
    Q_OBJECT

public:
    explicit frmWork(const CardContext& context, QWidget* parent = nullptr);

    Kind kind() const override { return Kind::Work; }
    QString key() const override;
    QString iconKey() const override { return QStringLiteral("Comp"); }
    bool reload() override;
    bool knows(const QString& command) const override;
    bool canRun(const QString& command) const override;
    void run(const QString& command) override;

private:
    void buildUi();
    QWidget* buildLeft();
    QWidget* buildRight();
    void addEntry(const QString& key, const QString& caption, const QString& shortcut,
                  std::function<void()> what, std::function<bool()> when = {});
    void paint();
    void showWork();
    void showDocuments();
    void edit();
    void exportCard();
    qint64 selectedRecording() const;
    void goToRecording();

    CardContext m_context;
    ActionTable m_own;
    WorkCard m_work;
    CardBand* m_band = nullptr;
    SpecsView* m_lines = nullptr;
    QPushButton* m_composer = nullptr;
    QPlainTextEdit* m_description = nullptr;
    DocumentPanel* m_documents = nullptr;
    QLabel* m_count = nullptr;
    ItemListModel* m_model = nullptr;
    QTreeView* m_recordings = nullptr;
};

} // namespace tessaranth
