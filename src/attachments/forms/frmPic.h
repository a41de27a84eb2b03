// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "attachments/CardImages.h"
#include "widgets/ActionTable.h"
#include "widgets/ChildWindow.h"
#include "widgets/FormContext.h"

class QComboBox;
class QHBoxLayout;
class QLabel;
class QToolButton;

namespace tessaranth {

class PictureView;

/// The picture viewer: the pictures of one card, one at a time, at any zoom. Keys: + - (zoom), 0 (own size),
/// F (fit), arrows or Page keys (previous, next), Home and End.
class frmPic final : public ChildWindow {
    Q_OBJECT

public:
    /// Begins with the picture of this index; with the last one when there are fewer.
    frmPic(const FormContext& context, const CardOwner& card, int index, QWidget* parent = nullptr);

    Kind kind() const override { return Kind::Picture; }
    QString key() const override;
    QString owner() const override { return m_owner; }
    QString iconKey() const override { return QStringLiteral("Images"); }
    bool reload() override;

    bool knows(const QString& key) const override { return m_commands.knows(key); }
    bool canRun(const QString& key) const override { return m_commands.canRun(key); }
    void run(const QString& key) override { m_commands.run(key); }

    int index() const { return m_index; }
    int count() const { return m_list.rowCount(); }
    void showImage(int index); ///< clamped to the pictures that there are
    PictureView* view() const { return m_view; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void addCommands();
    void buildUi();
    QToolButton* addButton(QHBoxLayout* row, const QString& name, const QString& iconKey, const QString& tip,
                           const std::function<void()>& what);
    void addZoomControls(QHBoxLayout* row);
    void addPointerButtons(QHBoxLayout* row);
    bool readList();
    void showCurrent();
    void showZoom();
    void zoomAsTyped();
    void setPointer(int pointer);
    void step(int by);
    void copy();
    bool hasFile() const;

    FormContext m_context;
    QString m_owner;
    CardImages m_images;
    ActionTable m_commands;
    ItemList m_list;
    int m_index = -1;
    PictureView* m_view = nullptr;
    QComboBox* m_zoom = nullptr;
    QLabel* m_position = nullptr;
    QLabel* m_facts = nullptr;
    QToolButton* m_back = nullptr;
    QToolButton* m_forward = nullptr;
    std::vector<QToolButton*> m_pointers; ///< in the order of PictureView::Pointer
};

} // namespace tessaranth
