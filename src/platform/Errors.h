// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <exception>

namespace tessaranth {

/// Base of what the core throws inside itself; public operations catch it at their end and report
/// through Messages, so no exception reaches a form.
class Error : public std::exception {
public:
    explicit Error(QString reason) : m_reason(std::move(reason)), m_bytes(m_reason.toUtf8()) {}
    const char* what() const noexcept override { return m_bytes.constData(); }
    const QString& reason() const { return m_reason; }

private:
    QString m_reason;
    QByteArray m_bytes;
};

/// A file could not be read or written; the reason names the file.
class FileError : public Error {
public:
    using Error::Error;
};

} // namespace tessaranth
