// SPDX-License-Identifier: GPL-3.0-or-later
#include "items/WorkDescription.h"

#include "items/RichText.h"
#include "store/Recordset.h"
#include "store/Session.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace tessaranth {

namespace {

QString tr(const char* text) { return QCoreApplication::translate("WorkDescription", text); }

} // namespace

template<typename Job>
bool WorkDescription::guarded(const Job& job) {
    try {
        return job();
    } catch (const Error& error) {
        m_session.messages().warning(applicationTitle,
                                     QStringLiteral("An unexpected error has occurred!\n") + error.reason());
        return false;
    }
}

qint64 WorkDescription::card() {
    return m_session.connection()
        .single(QStringLiteral("SELECT CardID FROM Cards WHERE RelatedID = %1 AND RelatedCat = 'Comp' "
                               "AND CardTitle = 'Descr' ORDER BY OrderNbr")
                    .arg(m_work))
        .toInteger();
}

QString WorkDescription::file(qint64 card) const {
    return m_session.dataFolder(Session::Folder::Documents) + u'/' + QString::number(card);
}

bool WorkDescription::read(Text& result) {
    return guarded([&] {
        Text found;
        found.card = card();
        QFile source(file(found.card));
        if (found.card != 0 && source.exists()) {
            if (!source.open(QIODevice::ReadOnly))
                throw FileError(tr("%1 cannot be read: %2").arg(source.fileName(), source.errorString()));
            const QByteArray document = source.readAll();
            found.text = RichText::toText(document);
            found.formatted = document != RichText::fromText(found.text);
        }
        result = found;
        return true;
    });
}

void WorkDescription::writeFile(const QString& path, const QString& text) const {
    const QByteArray document = RichText::fromText(text);
    QDir().mkpath(m_session.dataFolder(Session::Folder::Documents));
    QSaveFile target(path);
    if (!target.open(QIODevice::WriteOnly) || target.write(document) != document.size() || !target.commit())
        throw FileError(tr("%1 cannot be written: %2").arg(path, target.errorString()));
}

bool WorkDescription::write(const QString& text) {
    return guarded([&] {
        Connection& connection = m_session.connection();
        if (const qint64 known = card()) {
            writeFile(file(known), text);
            return true;
        }
        if (!connection.exists(QStringLiteral("SELECT * FROM Compositions WHERE CompID = %1").arg(m_work)))
            throw Error(tr("This work has been deleted meanwhile."));
        Transaction transaction(connection);
        const qint64 last =
            connection
                .single(QStringLiteral("SELECT MAX(OrderNbr) As maxNbr FROM Cards WHERE RelatedID = %1 AND "
                                       "RelatedCat = 'Comp'")
                            .arg(m_work))
                .toInteger();
        Recordset rows = Recordset::open(connection, QStringLiteral("SELECT * FROM Cards WHERE 1 = 0"));
        rows.add({{QStringLiteral("RelatedCat"), QStringLiteral("Comp")},
                  {QStringLiteral("RelatedID"), m_work},
                  {QStringLiteral("CardTitle"), QStringLiteral("Descr")},
                  {QStringLiteral("OrderNbr"), last + 1}});
        // The file first: a row in the catalog always has its document.
        const QString path = file(connection.lastKey());
        writeFile(path, text);
        try {
            transaction.commit();
        } catch (const Error&) {
            QFile::remove(path);
            throw;
        }
        return true;
    });
}

bool WorkDescription::remove() {
    return guarded([&] {
        const qint64 known = card();
        if (known == 0)
            return false;
        Question question;
        question.title = QStringLiteral("Remove description");
        question.text = QStringLiteral("Do you want to remove this description?");
        question.buttons = {Answer::Yes, Answer::No};
        question.defaultButton = Answer::No;
        if (m_session.messages().ask(question) != Answer::Yes)
            return false;
        // The row first, so that a file that cannot be deleted is left over rather than missed.
        m_session.connection().execute(QStringLiteral("DELETE FROM Cards WHERE CardID = ") +
                                       QString::number(known));
        QFile::remove(file(known));
        return true;
    });
}

} // namespace tessaranth
