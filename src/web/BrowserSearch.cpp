// SPDX-License-Identifier: GPL-3.0-or-later
#include "web/BrowserSearch.h"

#include "store/Configuration.h"
#include "store/Connection.h"

namespace tessaranth {

namespace {

struct NameRow {
    const char* code;
    const char* sql;
    int columns;
};

constexpr NameRow names[] = {{"Cps", "SELECT CpsLname, CpsFname FROM Cps WHERE CpsId = ", 2},
                             {"Pfr", "SELECT PfrLname, PfrFname FROM Pfr WHERE PfrId = ", 2},
                             {"Rec", "SELECT RecTitle FROM Rec WHERE RecId = ", 1},
                             {"UserDef", "SELECT UserDefTitle FROM UserDef WHERE UserDefId = ", 1}};

struct SearchRow {
    WebSearch search;
    const char* hostKey;
    const char* path;
    const char* wordsKey;
    const char* more; ///< follows the words
};

constexpr SearchRow searches[] = {
    {WebSearch::Pages, "SearchHost", "/search", "q", ""},
    {WebSearch::Images, "ImageHost", "/images", "q", ""},
    {WebSearch::Store, "StoreHost", "/exec/obidos/external-search", "keyword", "&mode=classical-music"}};

QString joinedWords(const QString& name) {
    QStringList words;
    for (const QString& word : name.split(u' ', Qt::SkipEmptyParts))
        words.push_back(QString::fromLatin1(QUrl::toPercentEncoding(word)));
    return words.join(u'+');
}

} // namespace

QString searchName(Connection& connection, const QString& code, qint64 id) {
    for (const NameRow& row : names) {
        if (code != QLatin1String(row.code))
            continue;
        Query query = connection.query(QLatin1String(row.sql) + QString::number(id));
        QStringList parts;
        if (query.next())
            for (int column = 0; column < row.columns; ++column)
                parts.push_back(query.text(column));
        return parts.join(u' ').simplified();
    }
    return {};
}

QUrl searchUrl(const Configuration& configuration, WebSearch search, const QString& name) {
    for (const SearchRow& row : searches) {
        if (row.search != search)
            continue;
        const QString host = configuration.read(QStringLiteral("Web"), QLatin1String(row.hostKey)).trimmed();
        QUrl url;
        url.setScheme(QStringLiteral("https"));
        url.setHost(host, QUrl::StrictMode);
        if (url.host().isEmpty())
            return {};
        url.setPath(QLatin1String(row.path));
        QString query = QLatin1String(row.wordsKey) + u'=' + joinedWords(name) + QLatin1String(row.more);
        const QString partner =
            configuration.read(QStringLiteral("Web"), QStringLiteral("StoreTag")).trimmed();
        if (search == WebSearch::Store && !partner.isEmpty())
            query += QStringLiteral("&tag=") + QString::fromLatin1(QUrl::toPercentEncoding(partner));
        url.setQuery(query, QUrl::StrictMode);
        return url;
    }
    return {};
}

} // namespace tessaranth
