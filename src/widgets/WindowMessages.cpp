// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/WindowMessages.h"

#include "widgets/frmInput.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>

namespace tessaranth {

namespace {

QMessageBox::Icon boxIcon(MessageIcon icon) {
    switch (icon) {
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::Warning:
        return QMessageBox::Warning;
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    case MessageIcon::Question:
        break;
    }
    return QMessageBox::Question;
}

QMessageBox::StandardButton boxButton(Answer answer) {
    switch (answer) {
    case Answer::Ok:
        return QMessageBox::Ok;
    case Answer::Yes:
        return QMessageBox::Yes;
    case Answer::No:
        return QMessageBox::No;
    case Answer::Cancel:
        break;
    }
    return QMessageBox::Cancel;
}

QString filterOf(const FileRequest& request) {
    // The dialog shows the name and reads the patterns between parentheses.
    const QString patterns = request.patterns.join(u' ');
    if (request.filterName.contains(u'('))
        return request.filterName.section(u'(', 0, 0) + u'(' + patterns + u')';
    return request.filterName + QStringLiteral(" (") + patterns + u')';
}

} // namespace

void WindowMessages::tell(MessageIcon icon, const QString& title, const QString& text) {
    QMessageBox box(boxIcon(icon), title, text, QMessageBox::Ok, QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

Answer WindowMessages::ask(const Question& question) {
    QMessageBox box(boxIcon(question.icon), question.title, question.text, QMessageBox::NoButton,
                    QApplication::activeWindow());
    box.setTextFormat(Qt::PlainText);
    Answer escape = question.buttons.back();
    for (const Answer answer : question.buttons) {
        box.addButton(boxButton(answer));
        if (answer == Answer::Cancel)
            escape = answer;
    }
    box.setDefaultButton(boxButton(question.defaultButton));
    box.setEscapeButton(boxButton(escape));
    const int chosen = box.exec();
    for (const Answer answer : question.buttons)
        if (boxButton(answer) == chosen)
            return answer;
    return escape;
}

QString WindowMessages::inputName(const NameRequest& request) {
    frmInput form(request, m_icons, QApplication::activeWindow());
    return form.exec() == QDialog::Accepted ? form.name() : QString();
}

QStringList WindowMessages::chooseFiles(const FileRequest& request) {
    QFileDialog dialog(QApplication::activeWindow(), request.title, request.folder);
    switch (request.mode) {
    case FileRequest::Mode::Open:
        dialog.setFileMode(QFileDialog::ExistingFile);
        break;
    case FileRequest::Mode::OpenMany:
        dialog.setFileMode(QFileDialog::ExistingFiles);
        break;
    case FileRequest::Mode::Save:
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setDefaultSuffix(request.defaultExtension);
        break;
    case FileRequest::Mode::Folder:
        dialog.setFileMode(QFileDialog::Directory);
        dialog.setOption(QFileDialog::ShowDirsOnly);
        break;
    }
    if (request.mode != FileRequest::Mode::Folder && !request.patterns.isEmpty())
        dialog.setNameFilter(filterOf(request));
    if (!request.fileName.isEmpty())
        dialog.selectFile(request.fileName);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles() : QStringList();
}

std::optional<QColor> WindowMessages::chooseColour(const QString& title, const QColor& current) {
    const QColor chosen = QColorDialog::getColor(current, QApplication::activeWindow(), title);
    return chosen.isValid() ? std::optional(chosen) : std::nullopt;
}

} // namespace tessaranth
