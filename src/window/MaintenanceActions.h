// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/FormContext.h"

#include <QString>
#include <functional>

class QWidget;

namespace tessaranth {

/// The commands of the Tools menu that care for the catalog file.
class MaintenanceActions {
public:
    MaintenanceActions(const FormContext& context, QWidget* window) : m_context(context), m_window(window) {}

    void compact();
    void backup();
    void copyToDestination();
    void empty();
    void cleanup();

    std::function<void()> changed; ///< the catalog's cards are others than before
    std::function<void()> restart; ///< the program is to be started again
    std::function<void(const QString&)> notice;

private:
    FormContext m_context;
    QWidget* m_window;
};

} // namespace tessaranth
