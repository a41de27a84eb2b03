// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/DialogSizes.h"

#include "store/Arrangements.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QScreen>

namespace tessaranth {

namespace {

constexpr const char* sizeAtFirst = "sizeAtFirst";

/// The name of one of our own forms without its namespace; empty for the desktop's dialogs.
QString formName(const QDialog* dialog) {
    const QString name = QString::fromLatin1(dialog->metaObject()->className());
    const QString own = QStringLiteral("tessaranth::");
    return name.startsWith(own) ? name.mid(own.size()) : QString();
}

} // namespace

DialogSizes::DialogSizes(Arrangements& arrangements, QObject* parent)
    : QObject(parent), m_arrangements(arrangements) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool DialogSizes::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::Polish && type != QEvent::Show && type != QEvent::Hide)
        return false;
    auto* dialog = qobject_cast<QDialog*>(watched);
    if (!dialog || event->spontaneous() || formName(dialog).isEmpty())
        return false;
    if (type == QEvent::Polish) {
        const QList<int> size = m_arrangements.read(Arrangements::forms, formName(dialog));
        if (size.size() == 2)
            dialog->resize(QSize(size[0], size[1])
                               .expandedTo(dialog->minimumSizeHint())
                               .boundedTo(dialog->screen()->availableSize()));
    } else if (type == QEvent::Show) {
        // What the layout made of it is nobody's choice.
        dialog->setProperty(sizeAtFirst, dialog->size());
    } else if (!dialog->isMaximized() && dialog->size() != dialog->property(sizeAtFirst).toSize()) {
        m_arrangements.keep(Arrangements::forms, formName(dialog), {dialog->width(), dialog->height()});
    }
    return false;
}

} // namespace tessaranth
