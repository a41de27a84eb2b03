// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <functional>
#include <vector>

class QTabWidget;

namespace tessaranth {

class ColoursPage;
class IconStore;
class Session;
class SettingEditor;

/// "Program settings": what the configuration file holds, page by page. Everything is checked before anything
/// is stored.
class frmSettings final : public QDialog {
    Q_OBJECT

public:
    frmSettings(Session& session, const IconStore& icons, QWidget* parent = nullptr);

    /// Told after values were stored: windows read their colours and lists again.
    std::function<void()> applied;

    void reject() override;

private:
    void buildUi();
    void buildPage(const QString& page);
    bool isChanged() const;
    bool apply();
    bool check();
    bool prepareFolder(const SettingEditor& editor, const QString& before);
    QString stored(const SettingEditor& editor) const;

    Session& m_session;
    const IconStore& m_icons;
    QTabWidget* m_pages = nullptr;
    ColoursPage* m_colours = nullptr;
    std::vector<SettingEditor*> m_editors;
};

} // namespace tessaranth
