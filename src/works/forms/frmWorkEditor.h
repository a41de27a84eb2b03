// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/FormContext.h"
#include "works/CWKS.h"

#include <QDialog>

class QLabel;
class QTabWidget;

namespace tessaranth {

class WorkCharactersTab;
class WorkDescriptionTab;
class WorkSpecsTab;
struct Person;

/// The editor of a composer's work, new (id 0) or existing. Accepted when the catalog holds something that it
/// did not hold before, which may be so though the last changes were dropped.
class frmWorkEditor final : public QDialog {
    Q_OBJECT

public:
    frmWorkEditor(const FormContext& context, qint64 composer, qint64 workId, QWidget* parent = nullptr);
    qint64 workId() const { return m_stored.id; } ///< 0 while the work is not in the catalog
    void reject() override;

private:
    void buildUi(const QString& composer);
    static QString lineOf(const Person& composer);
    void showHint();
    Work typed() const;
    bool isChanged() const;
    bool save();
    qint64 savedWork();

    FormContext m_context;
    Work m_stored;       ///< as the catalog and, word for word, the fields have it
    bool m_done = false; ///< saved at least once
    QTabWidget* m_tabs = nullptr;
    QLabel* m_hint = nullptr;
    WorkSpecsTab* m_specs = nullptr;
    WorkDescriptionTab* m_description = nullptr;
    WorkCharactersTab* m_characters = nullptr;
};

} // namespace tessaranth
