// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>

namespace tessaranth {

/// One piece of a document in Rich Text Format. The views are into the document's bytes.
struct RtfToken {
    enum class Kind {
        Open,   ///< {
        Close,  ///< }
        Word,   ///< \name or \nameN
        Symbol, ///< \ and one character that is no letter, in `text`
        Byte,   ///< \'hh, in `number`
        Text,   ///< bytes as they stand, without line ends
        Data,   ///< what \binN announces, in `text`
        Damage, ///< a \binN that announces more than there is
        End
    };
    Kind kind = Kind::End;
    QByteArrayView text; ///< the word's name, or what the kind says
    int number = 0;
    bool hasNumber = false;
};

/// Takes a document apart (Rich Text Format Specification 1.9.1, "Conventions of an RTF Reader"). Every byte
/// sequence gives tokens; at the end it gives End for ever.
class RtfTokens {
public:
    explicit RtfTokens(QByteArrayView document) : m_document(document) {}
    RtfToken next();

private:
    bool atEnd() const { return m_position >= m_document.size(); }
    char peek() const { return m_document[m_position]; }
    RtfToken control();
    RtfToken word();
    RtfToken hexByte();
    RtfToken text();
    int number();

    QByteArrayView m_document;
    qsizetype m_position = 0;
};

} // namespace tessaranth
