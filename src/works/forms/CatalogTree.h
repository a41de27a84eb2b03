// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "works/ComposerCatalog.h"

#include <QTreeWidget>

namespace tessaranth {

class IconStore;

/// The two branches of a composer's catalog with their nodes. Works dragged from a list can be dropped onto a
/// node.
class CatalogTree final : public QTreeWidget {
    Q_OBJECT

public:
    using Branch = CatalogBranch::Number;
    /// Where the tree stands: a node of a branch, or without one the branch as a whole.
    struct Place {
        Branch branch = CatalogBranch::Genres;
        std::optional<qint64> node;
        bool operator==(const Place&) const = default;
    };

    explicit CatalogTree(const IconStore& icons, QWidget* parent = nullptr);

    /// Reads the nodes again and stays where it was, as far as that is still there.
    void fill(ComposerCatalog& catalog);
    Place place() const;
    void setPlace(const Place& place);
    /// Ids of the selected nodes of a branch, without "Unclassified".
    std::vector<qint64> selectedNodes(Branch branch) const;

signals:
    void placeChanged();
    /// Node 0 is "Unclassified". Connect queued: the drag is still going on.
    void worksDropped(int branch, qint64 node, const QList<qint64>& works);

protected:
    QStringList mimeTypes() const override;
    Qt::DropActions supportedDropActions() const override { return Qt::CopyAction | Qt::MoveAction; }
    bool dropMimeData(QTreeWidgetItem* parent, int index, const QMimeData* data,
                      Qt::DropAction action) override;

private:
    static Place placeOf(const QTreeWidgetItem* item);

    const IconStore& m_icons;
};

} // namespace tessaranth
