// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/PersonArchive.h"
#include "widgets/FormContext.h"
#include "widgets/FormHelpers.h"

#include <QDialog>

class QLabel;

namespace tessaranth {

/// Searches the reference archive of persons. In single mode one row is chosen for the person editor; in the
/// other, many are added to the catalog at once.
class frmPersSearch final : public QDialog {
    Q_OBJECT

public:
    enum class Mode { ChooseOne, ImportMany };
    frmPersSearch(const FormContext& context, int kind, const QString& text, QWidget* parent = nullptr,
                  Mode mode = Mode::ChooseOne);

    Person person() const; ///< the chosen one
    QString dateNote() const;

private:
    void buildUi();
    void search();
    void enable();
    void run();
    void importSelected();

    FormContext m_context;
    int m_kind;
    Mode m_mode;
    std::optional<PersonArchive> m_archive;
    FormHelpers::NarrowedList m_list;
    QLabel* m_state = nullptr;
    QPushButton* m_import = nullptr;
};

} // namespace tessaranth
