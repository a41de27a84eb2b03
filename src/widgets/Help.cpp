// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/Help.h"

#include "platform/Desktop.h"
#include "platform/Messages.h"
#include "store/Session.h"

#include <QApplication>
#include <QFileInfo>
#include <QKeyEvent>
#include <QWidget>

namespace tessaranth {

namespace {

// Not the key itself, which a window may have as the shortcut of the command that sends this.
QEvent::Type requestType() {
    static const auto type = QEvent::Type(QEvent::registerEventType());
    return type;
}

bool isF1(const QEvent* event) {
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto* key = static_cast<const QKeyEvent*>(event);
    return key->key() == Qt::Key_F1 && key->modifiers() == Qt::NoModifier;
}

} // namespace

Help::Help(Session& session, const QString& folder, QObject* parent)
    : QObject(parent), m_session(session), m_folder(folder) {
    qApp->installEventFilter(this);
}

void Help::request(QWidget* form) {
    QEvent request(requestType());
    QCoreApplication::sendEvent(form, &request);
}

QString Help::pathOf(const QString& name) const { return m_folder + u'/' + name + QStringLiteral(".html"); }

QString Help::pageOf(const QWidget* window) const {
    for (const QWidget* widget = window; widget; widget = widget->parentWidget())
        if (QString page = pathOf(widget->objectName());
            !widget->objectName().isEmpty() && QFileInfo::exists(page))
            return page;
    return pathOf(QStringLiteral("index"));
}

void Help::open(const QString& page) {
    if (!QFileInfo::exists(page))
        m_session.messages().warning(applicationTitle, tr("The help page %1 is missing.").arg(page));
    else if (!m_session.desktop().openFile(page))
        m_session.messages().warning(applicationTitle,
                                     tr("The system has no program that shows %1.").arg(page));
}

bool Help::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWidgetType() || !(event->type() == requestType() || isF1(event)))
        return QObject::eventFilter(watched, event);
    open(pageOf(static_cast<QWidget*>(watched)));
    return true;
}

} // namespace tessaranth
