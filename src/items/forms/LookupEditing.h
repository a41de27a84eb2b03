// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

class QWidget;

namespace tessaranth {

struct FormContext;

/// Asks for a new entry of a lookup list (kinds 5 to 8): labels in their own form, as they have a logo, the
/// others by their name alone. Its key, or 0 when nothing was added.
qint64 addLookup(const FormContext& context, int kind, QWidget* parent);
/// Changes one; false when nothing was changed.
bool editLookup(const FormContext& context, int kind, qint64 id, QWidget* parent);

} // namespace tessaranth
