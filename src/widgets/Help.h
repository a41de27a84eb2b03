// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

class QWidget;

namespace tessaranth {

class Session;

/// Opens the help page of a window in the system's viewer: by F1 anywhere in the program, and by what calls
/// request(). A page has the name of its window's class.
class Help final : public QObject {
    Q_OBJECT

public:
    /// `folder` holds the pages, index.html among them. Watches the whole application while it lives.
    Help(Session& session, const QString& folder, QObject* parent = nullptr);

    /// Opens the page of a form, as F1 in it does: for Help buttons and commands.
    static void request(QWidget* form);

    /// The page of a window, of the first one of those that it stands in, or the contents: full path.
    QString pageOf(const QWidget* window) const;
    void open(const QString& page);
    /// "index" or another page without its ending.
    void openPage(const QString& name) { open(pathOf(name)); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString pathOf(const QString& name) const;

    Session& m_session;
    QString m_folder;
};

} // namespace tessaranth
