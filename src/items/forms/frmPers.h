// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/Person.h"
#include "items/forms/EditForm.h"

class QFormLayout;
class QLabel;

namespace tessaranth {

/// The editor of a composer or performer, new (id 0) or existing. Accepted when it was saved.
class frmPers final : public EditForm {
    Q_OBJECT

public:
    frmPers(const FormContext& context, int kind, qint64 id, QWidget* parent = nullptr);
    qint64 id() const { return m_stored.id; }

private:
    bool isChanged() const override;
    bool save() override;
    void buildUi();
    void addFields(QFormLayout* fields);
    QWidget* toolRow();
    Person typed() const;
    void show(const Person& person);
    void checkFields();
    void importFromArchive();
    void offerDateNote();

    int m_kind;
    Person m_stored;    ///< as the catalog has it; keeps its id when the card is gone
    QString m_dateNote; ///< of the person taken from the internal list
    QLineEdit* m_last = nullptr;
    QLineEdit* m_first = nullptr;
    QLineEdit* m_born = nullptr;
    QLineEdit* m_died = nullptr;
    QLineEdit* m_acronym = nullptr;
    QLabel* m_note = nullptr;
    QPushButton* m_save = nullptr;
};

} // namespace tessaranth
