// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/Reading.h"

#include "store/Guarded.h"

#include <QCoreApplication>
#include <QEvent>
#include <QLabel>
#include <QPointer>

namespace tessaranth {

namespace {

/// Lies over a widget and keeps what is below it from being used.
class Cover : public QLabel {
public:
    explicit Cover(QWidget* widget)
        : QLabel(QCoreApplication::translate("Reading", "This cannot be read."), widget) {
        setObjectName(QStringLiteral("unreadable"));
        setAlignment(Qt::AlignCenter);
        setWordWrap(true);
        setAutoFillBackground(true);
        for (QObject* child : widget->children())
            if (auto* one = qobject_cast<QWidget*>(child); one && one != this && one->isEnabled()) {
                one->setEnabled(false);
                m_disabled.push_back(one);
            }
        widget->installEventFilter(this);
        resize(widget->size());
        show();
    }
    ~Cover() override {
        for (const QPointer<QWidget>& one : m_disabled)
            if (one)
                one->setEnabled(true);
    }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Resize) {
            resize(parentWidget()->size());
            raise();
        }
        return QLabel::eventFilter(watched, event);
    }

private:
    std::vector<QPointer<QWidget>> m_disabled;
};

QWidget* coverOf(const QWidget* widget) {
    return widget->findChild<QWidget*>(QStringLiteral("unreadable"), Qt::FindDirectChildrenOnly);
}

} // namespace

bool readInto(QWidget* widget, Session& session, const std::function<void()>& read) {
    const bool isRead = guarded(session, read);
    if (isRead)
        delete coverOf(widget);
    else
        refuseToShow(widget);
    return isRead;
}

void refuseToShow(QWidget* widget) {
    if (!isUnreadable(widget))
        new Cover(widget);
}

bool isUnreadable(const QWidget* widget) { return coverOf(widget) != nullptr; }

} // namespace tessaranth
