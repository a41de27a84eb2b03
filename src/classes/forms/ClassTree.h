// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/FormContext.h"

#include <QSet>
#include <QTreeWidget>

namespace tessaranth {

/// The categories and sub-categories of the four kinds of card. Cards dragged from a list can be dropped onto
/// a sub-category of their kind.
class ClassTree final : public QTreeWidget {
    Q_OBJECT

public:
    /// `Manage` has a node for the global view and one above the categories; `Browse` has one for the cards
    /// in no category, and a number of cards behind each name.
    enum class Style { Manage, Browse };
    enum Node { Root, GlobalView, Categories, Category, SubCategory, Unclassified };
    struct Place {
        int kind = 0;
        Node node = Root;
        qint64 id = 0; ///< of a category or sub-category
        bool operator==(const Place&) const = default;
    };

    ClassTree(const FormContext& context, Style style, QWidget* parent = nullptr);

    /// Reads one kind again, or all of them (0), and stays where it was as far as that is still there.
    void fill(int kind = 0);
    Place place() const { return placeOf(currentItem()); }
    void setPlace(const Place& place);
    /// The category chosen, or the one of the sub-category chosen; 0 for none.
    qint64 category() const;
    /// The kind whose cards can be dropped from now on.
    void setDropKind(int kind);

signals:
    void placeChanged();
    /// Connect queued: the drag is still going on.
    void cardsDropped(int kind, qint64 subCategory, const QList<qint64>& cards);

protected:
    QStringList mimeTypes() const override;
    Qt::DropActions supportedDropActions() const override { return Qt::CopyAction | Qt::MoveAction; }
    bool dropMimeData(QTreeWidgetItem* parent, int index, const QMimeData* data,
                      Qt::DropAction action) override;

private:
    static Place placeOf(const QTreeWidgetItem* item);
    QTreeWidgetItem* find(const Place& place) const;
    QTreeWidgetItem* add(QTreeWidgetItem* parent, const Place& place, const QString& name,
                         const QString& iconKey, int cards);
    void fillRoot(QTreeWidgetItem* root);
    void fillBelow(QTreeWidgetItem* root, int kind);
    QString caption(const QString& name, int cards) const;

    FormContext m_context;
    Style m_style;
    int m_dropKind = 0;
};

} // namespace tessaranth
