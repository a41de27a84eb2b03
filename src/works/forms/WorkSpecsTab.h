// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "works/WorkGroups.h"

#include <QWidget>
#include <functional>

class QLabel;
class QComboBox;
class QFormLayout;
class QLineEdit;

namespace tessaranth {

class Session;
struct Work;

/// The fields of a work: titles, number, year, and what it is grouped by.
class WorkSpecsTab final : public QWidget {
    Q_OBJECT

public:
    WorkSpecsTab(Session& session, qint64 composer, QWidget* parent = nullptr);

    void show(const Work& work);
    void read(Work& work) const; ///< changes what the tab shows and nothing else
    /// Turns the title yellow and puts the cursor into it.
    void demandTitle();

private:
    void buildTexts(QFormLayout* fields);
    void buildCombos(QFormLayout* fields);
    QComboBox* combo(QFormLayout* fields, const QString& caption, const QString& objectName,
                     const QString& newCaption, const QString& newTip, const std::function<qint64()>& create);
    void fillGroups(WorkGroups::Kind kind);
    void fillGenres();
    void fillKeys();

    Session& m_session;
    WorkGroups m_groups;
    qint64 m_composer;
    QLabel* m_acronym = nullptr;
    QLineEdit* m_title = nullptr;
    QLineEdit* m_subtitle = nullptr;
    QLineEdit* m_number = nullptr;
    QLineEdit* m_year = nullptr;
    QComboBox* m_mainWork = nullptr;
    QComboBox* m_composerGenre = nullptr;
    QComboBox* m_genre = nullptr;
    QComboBox* m_key = nullptr;
};

} // namespace tessaranth
