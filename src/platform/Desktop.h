// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QString;
class QUrl;

namespace tessaranth {

/// Hands things to the programs that the user's system keeps for them. Whether something may be opened is
/// for the caller to know. False when the system has nothing to open it with.
class Desktop {
public:
    virtual ~Desktop() = default;
    virtual bool openFile(const QString& path) = 0;   ///< in the program of its type
    virtual bool openFolder(const QString& path) = 0; ///< in the file manager
    virtual bool openUrl(const QUrl& url) = 0;        ///< in the browser, mail program, ...
};

/// The desktop on which the program runs.
class SystemDesktop final : public Desktop {
public:
    bool openFile(const QString& path) override;
    bool openFolder(const QString& path) override;
    bool openUrl(const QUrl& url) override;
};

} // namespace tessaranth
