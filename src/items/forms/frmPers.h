// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "items/Person.h"
#include "widgets/FormContext.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

namespace tessaranth {

/// The editor of a composer or performer, new (id 0) or existing. Accepted when it was saved.
class frmPers final : public QDialog {
    Q_OBJECT

public:
    frmPers(const FormContext& context, int kind, qint64 id, QWidget* parent = nullptr);
    qint64 id() const { return m_stored.id; }
    void reject() override;

private:
    void buildUi();
    Person typed() const;
    void show(const Person& person);
    bool isChanged() const;
    void checkYears();
    bool save();
    void importFromArchive();
    void offerDateNote();
    void insertSpecial();

    FormContext m_context;
    int m_kind;
    Person m_stored;
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
