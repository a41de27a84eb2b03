// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/forms/RecTab.h"

#include <QHash>
#include <map>

class QBoxLayout;
class QLabel;

namespace tessaranth {

class OrderedTree;

/// Who performs in the works of the recording, and in which roles. Edits of several works can be under way;
/// they are saved work by work.
class RecCastTab final : public RecTab {
    Q_OBJECT

public:
    explicit RecCastTab(RecContext& context);

    bool isChanged() const override;
    bool apply() override;
    QString obstacle() const override;
    QWidget* firstField() const override;

protected:
    void read() override;

private:
    /// The roles of every performer in a work; none for one without a role.
    using Cast = std::map<qint64, std::vector<qint64>>;
    struct Part {
        PlacedWork work;
        Cast cast;
        Cast read;
    };
    static Cast castOf(const std::vector<Casting>& rows);
    static std::vector<Casting> rowsOf(const Cast& cast);
    void buildWorks(QBoxLayout* layout);
    void buildPerformers(QBoxLayout* layout);
    void showWorks();
    void showPerformers();
    void showCounts();
    QString rolesOf(const std::vector<qint64>& roles) const;
    void readRoles();
    Part* currentPart();
    std::vector<Part*> selectedParts();
    void enable();
    void step(int places);
    void addPerformers();
    void removePerformers();
    void chooseRoles();
    void clearRoles();
    void changedCast();

    std::vector<Part> m_parts;
    std::vector<RecordingArtist> m_performers; ///< of the recording
    std::vector<qint64> m_shown;               ///< performers of the current work, by row
    QHash<qint64, QString> m_roleNames;        ///< of the current work
    OrderedTree* m_works = nullptr;
    OrderedTree* m_list = nullptr;
    QLabel* m_heading = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_remove = nullptr;
    QPushButton* m_roles = nullptr;
    QPushButton* m_clear = nullptr;
    QPushButton* m_previous = nullptr;
    QPushButton* m_next = nullptr;
};

} // namespace tessaranth
