// SPDX-License-Identifier: GPL-3.0-or-later
#include "window/frmSettings.h"

#include "store/Session.h"
#include "widgets/FormHelpers.h"
#include "window/ColoursPage.h"
#include "window/SettingEditor.h"

#include <QDir>
#include <QFormLayout>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace tessaranth {

frmSettings::frmSettings(const FormContext& context, QWidget* parent) : QDialog(parent), m_context(context) {
    setObjectName(QStringLiteral("frmSettings"));
    setWindowTitle(QStringLiteral("Program settings"));
    buildUi();
}

void frmSettings::buildUi() {
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(FormHelpers::head(m_context.icons, QStringLiteral("Settings"), windowTitle(),
                                        tr("Colours, folders, reports and care of the catalog.")));
    m_pages = new QTabWidget;
    m_pages->setObjectName(QStringLiteral("pages"));
    m_pages->setAccessibleName(tr("Pages of the settings"));
    QStringList built;
    for (const SettingRow& row : settingRows()) {
        if (built.contains(row.page))
            continue;
        buildPage(row.page);
        if (built.isEmpty()) {
            m_colours = new ColoursPage(m_context.session);
            m_pages->addTab(m_colours, tr("Colours"));
        }
        built.push_back(row.page);
    }
    layout->addWidget(m_pages, 1);
    QPushButton* save = FormHelpers::buttonRow(this, layout, tr("Sa&ve"), QStringLiteral("cmdSave"));
    connect(save, &QPushButton::clicked, this, [this] {
        if (apply())
            accept();
    });
    resize(680, 460);
}

void frmSettings::buildPage(const QString& page) {
    auto* widget = new QWidget;
    auto* form = new QFormLayout(widget);
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    for (const SettingRow& row : settingRows()) {
        if (row.page != page)
            continue;
        auto* editor = new SettingEditor(row, m_context.session.messages());
        editor->setValue(stored(*editor));
        editor->addTo(form);
        m_editors.push_back(editor);
    }
    m_pages->addTab(widget, page);
}

QString frmSettings::stored(const SettingEditor& editor) const {
    return settingOr(editor.row(),
                     m_context.session.configuration().read(editor.row().section, editor.row().key));
}

bool frmSettings::isChanged() const {
    return m_colours->isChanged() ||
           std::any_of(m_editors.begin(), m_editors.end(),
                       [this](const auto* editor) { return editor->value() != stored(*editor); });
}

bool frmSettings::check() {
    for (SettingEditor* editor : m_editors) {
        const QString fault =
            editor->value() == stored(*editor) ? QString() : settingFault(editor->row(), editor->value());
        if (fault.isEmpty())
            continue;
        for (int page = 0; page < m_pages->count(); ++page)
            if (m_pages->widget(page)->isAncestorOf(editor))
                m_pages->setCurrentIndex(page);
        m_context.session.messages().warning(windowTitle(), fault);
        editor->setFocus();
        return false;
    }
    return true;
}

// Files of the catalog are known by their names alone: in another folder they would all be missing.
bool frmSettings::prepareFolder(const SettingEditor& editor, const QString& before) {
    const QString folder = editor.value();
    if (folder.isEmpty())
        return true;
    if (!QDir(folder).exists() && !QDir().mkpath(folder)) {
        m_context.session.messages().warning(windowTitle(), tr("The folder %1 cannot be made.").arg(folder));
        return false;
    }
    const auto count = QDir(before).entryList(QDir::Files | QDir::Hidden).size();
    if (editor.row().section != u"Data folders" || before.isEmpty() || count == 0)
        return true;
    Question question;
    question.title = windowTitle();
    question.text = tr("The folder %1 holds %2 files of the catalog.\nMove them to %3?")
                        .arg(before)
                        .arg(count)
                        .arg(folder);
    question.buttons = {Answer::Yes, Answer::No, Answer::Cancel};
    question.defaultButton = Answer::Yes;
    const Answer answer = m_context.session.messages().ask(question);
    QString reason;
    if (answer == Answer::Yes && moveDataFiles(before, folder, reason) < 0) {
        m_context.session.messages().warning(windowTitle(),
                                             tr("The files stay where they are: %1").arg(reason));
        return false;
    }
    return answer != Answer::Cancel;
}

bool frmSettings::apply() {
    if (!check())
        return false;
    Configuration& configuration = m_context.session.configuration();
    QString failure = m_colours->store() ? QString() : configuration.failure();
    for (SettingEditor* editor : m_editors) {
        const SettingRow& row = editor->row();
        const QString before = stored(*editor);
        if (editor->value() == before)
            continue;
        if (!configuration.write(row.section, row.key, editor->value())) {
            failure = configuration.failure();
            continue;
        }
        // The files follow the setting: without it they would be looked for where they no longer are.
        if (row.type == SettingRow::Type::Folder && !prepareFolder(*editor, before)) {
            configuration.write(row.section, row.key, before);
            return false;
        }
    }
    if (!failure.isEmpty())
        m_context.session.messages().warning(windowTitle(),
                                             tr("Some settings are not stored. %1").arg(failure));
    if (applied)
        applied();
    return failure.isEmpty();
}

void frmSettings::reject() {
    FormHelpers::closeForm(this, m_context.session.messages(), isChanged(), [this] { return apply(); });
}

} // namespace tessaranth
