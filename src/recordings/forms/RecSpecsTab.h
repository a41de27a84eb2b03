// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/forms/RecTab.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace tessaranth {

class RecLookupField;

/// The recording's own specifications.
class RecSpecsTab final : public RecTab {
    Q_OBJECT

public:
    explicit RecSpecsTab(RecContext& context);

    bool isChanged() const override { return typed() != m_shown; }
    bool canApply() const override;
    bool apply() override;
    QWidget* firstField() const override;

    RecordingSpecs typed() const;
    /// Shows the date of the last change; another tab's apply sets it, too.
    void showDates();

protected:
    void read() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildTexts(QGridLayout* grid);
    void buildLookups(QGridLayout* grid);
    QComboBox* combo(QGridLayout* grid, int row, const QString& caption, const char* objectName,
                     const QStringList& entries);
    void buildEnd(QGridLayout* grid);
    void show(const RecordingSpecs& specs);
    bool checkUnits();

    RecordingSpecs m_read;  ///< as the catalog had it
    RecordingSpecs m_shown; ///< the same as the fields give it back
    std::vector<QLineEdit*> m_texts;
    std::vector<RecLookupField*> m_lookups;
    QLineEdit* m_units = nullptr;
    QComboBox* m_spars = nullptr;
    QComboBox* m_rating = nullptr;
    QCheckBox* m_reference = nullptr;
    QPlainTextEdit* m_notes = nullptr;
    QLabel* m_dates = nullptr;
};

} // namespace tessaranth
