// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/FormContext.h"

#include <QDialog>
#include <functional>
#include <vector>

class QTabWidget;

namespace tessaranth {

class ColoursPage;
class SettingEditor;

/// "Program settings": what the configuration file holds, page by page. Everything is checked before anything
/// is stored.
class frmSettings final : public QDialog {
    Q_OBJECT

public:
    frmSettings(const FormContext& context, QWidget* parent = nullptr);

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

    FormContext m_context;
    QTabWidget* m_pages = nullptr;
    ColoursPage* m_colours = nullptr;
    std::vector<SettingEditor*> m_editors;
};

} // namespace tessaranth
