// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QUrl>

namespace tessaranth {

class Configuration;
class Connection;

/// The searches that open in the browser.
enum class WebSearch { Pages, Images, Store };

/// What to look for so that an item is found: last and first name, or the title. Empty for an unknown code
/// ("Cps", "Pfr", "Rec", "UserDef") or id. Throws SqlError.
QString searchName(Connection& connection, const QString& code, qint64 id);

/// The address of a search for a name, its words joined by "+". Hosts are those of the section Web of the
/// configuration. Invalid when the host is missing or is none.
QUrl searchUrl(const Configuration& configuration, WebSearch search, const QString& name);

} // namespace tessaranth
