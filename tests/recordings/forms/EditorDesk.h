// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "recordings/forms/frmRec.h"
#include "support/ItemCatalog.h"
#include "widgets/IconStore.h"
#include "widgets/OrderedTree.h"

#include <QApplication>
#include <QTabWidget>
#include <QTest>
#include <QTimer>

namespace tessaranth {

/// A recording's editor over a catalog, and the hands of its user.
class EditorDesk {
protected:
    template<typename Widget = QWidget>
    Widget* find(const char* name) const {
        auto* widget = m_editor->findChild<Widget*>(QString::fromLatin1(name));
        if (!widget)
            QTest::qFail(name, __FILE__, __LINE__);
        return widget;
    }
    OrderedTree* list(const char* name) const {
        return find<QTabWidget>("tabs")->currentWidget()->findChild<OrderedTree*>(QString::fromLatin1(name));
    }
    static QWidget* focused() {
        QWidget* window = QApplication::activeModalWidget();
        if (!window) {
            window = s_window; // active again once a dialog above it has gone
            window->activateWindow();
            if (window->isVisible() && !QTest::qWaitForWindowActive(window))
                QTest::qFail("the editor is not active", __FILE__, __LINE__);
        }
        return window->focusWidget() ? window->focusWidget() : window;
    }
    static void type(const QString& text) {
        for (const QChar c : text)
            QTest::sendKeyEvent(QTest::Click, focused(), Qt::Key_unknown, QString(c), Qt::NoModifier);
    }
    static void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(focused(), key, modifiers);
        if (modifiers == Qt::AltModifier) // a button pressed by its letter acts when it comes up again
            QTest::qWait(150);
    }
    /// What is typed into the chooser that opens next.
    template<typename Work>
    void then(const Work& work) const {
        auto* timer = new QTimer(m_editor.get());
        QObject::connect(timer, &QTimer::timeout, timer, [timer, work] {
            QWidget* opened = QApplication::activeModalWidget();
            if (!opened || !opened->isActiveWindow())
                return;
            timer->stop();
            timer->deleteLater();
            work();
        });
        timer->start(5);
    }
    void click(const char* name) const { QTest::mouseClick(find(name), Qt::LeftButton); }
    void addRecordings(const std::vector<std::pair<const char*, int>>& recordings) const {
        for (const auto& [title, units] : recordings)
            m_home->run(
                QString("INSERT INTO Rec (RecTitle, UnitsNbr) VALUES ('%1', %2)").arg(title).arg(units));
    }

    std::unique_ptr<ItemCatalog> m_home;
    std::unique_ptr<IconStore> m_icons;
    FakeCards m_cards;
    std::unique_ptr<frmRec> m_editor;
    static inline QWidget* s_window = nullptr; ///< the editor, for what is typed without a dialog above it
};

} // namespace tessaranth
