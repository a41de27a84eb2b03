// SPDX-License-Identifier: GPL-3.0-or-later
#include "Generator.h"

#include "store/CatalogTemplate.h"

#include <QFile>
#include <SQLiteCpp/SQLiteCpp.h>
#include <algorithm>
#include <cmath>
#include <random>

namespace tessaranth {

namespace {

const char* const syllables[] = {"ba",  "ber", "cho", "da",   "dvo", "el",  "fran", "gre",
                                 "han", "ja",  "ku",  "lisz", "mar", "na",  "or",   "par",
                                 "qui", "ro",  "so",  "tal",  "ur",  "ver", "wag",  "zem"};
/// Instead of one of the others, once in 25: about every fifth title of a recording has an accent then.
const char* const accented[] = {"gré", "hän", "ná", "pär", "šo", "dvoř"};
const char* const forms[] = {"Symphony", "Concerto",   "Sonata",       "Quartet", "Elegy",
                             "Mass",     "Overture",   "Suite",        "Prelude", "Trio",
                             "Nocturne", "Variations", "Missa brevis", "Lied",    "Fantasia"};

class Generator {
public:
    Generator(const QString& path, int recordings, quint32 seed)
        : m_database(path.toStdString(), SQLite::OPEN_READWRITE), m_random(seed), m_recordings(recordings),
          m_composers(std::clamp(recordings / 25, 20, 3000)), m_performers(std::max(recordings / 8, 40)),
          m_works(std::max(recordings / 2, 100)) {}

    void run() {
        m_database.exec("PRAGMA journal_mode = OFF; PRAGMA synchronous = OFF");
        SQLite::Transaction transaction(m_database);
        persons();
        lookups();
        works();
        recordings();
        classes();
        transaction.commit();
        m_database.exec("PRAGMA journal_mode = DELETE");
    }

private:
    int below(int limit) { return int(m_random() % quint32(limit)); }
    /// A number from 1 to limit, small ones far more often.
    int skewed(int limit) {
        const double unit = (m_random() + 0.5) / 4294967296.0;
        return std::clamp(int(std::pow(double(limit), unit)), 1, limit);
    }

    std::string name(int parts) {
        std::string text;
        for (int i = 0; i < parts; ++i)
            text += below(25) == 0 ? accented[below(int(std::size(accented)))]
                                   : syllables[below(int(std::size(syllables)))];
        if (static_cast<unsigned char>(text.front()) < 128)
            text.front() = char(toupper(text.front()));
        return text;
    }

    template<typename... Cells>
    void insert(SQLite::Statement& statement, const Cells&... cells) {
        int index = 0;
        (statement.bind(++index, cells), ...);
        statement.exec();
        statement.reset();
    }

    void persons() {
        SQLite::Statement composer(
            m_database,
            "INSERT INTO Cps (CpsLname, CpsFname, CpsY, CpsB, CpsD, CatAcr) VALUES (?, ?, ?, ?, ?, 'Op.')");
        for (int i = 0; i < m_composers; ++i) {
            const std::string born = std::to_string(1500 + below(480));
            insert(composer, name(2 + below(2)), name(2), born + "-?", born, std::string());
        }
        SQLite::Statement performer(m_database,
                                    "INSERT INTO Pfr (PfrLname, PfrFname, PfrB) VALUES (?, ?, '')");
        for (int i = 0; i < m_performers; ++i)
            insert(performer, name(2 + below(3)), below(4) == 0 ? std::string() : name(2));
    }

    void lookups() {
        SQLite::Statement label(m_database, "INSERT INTO Labels (LabelName) VALUES (?)");
        for (int i = 0; i < labels; ++i)
            insert(label, name(2 + below(2)));
        SQLite::Statement source(m_database, "INSERT INTO Sources (SourceType) VALUES (?)");
        for (const char* text : {"Shop", "Auction", "Gift", "Exchange"})
            insert(source, text);
        SQLite::Statement genre(m_database, "INSERT INTO Genres (GenreName) VALUES (?)");
        for (const char* text : forms)
            insert(genre, text);
    }

    void works() {
        SQLite::Statement work(
            m_database, "INSERT INTO Compositions (CpsID, CompTitle, CompNbr, CompYear, GenreID, KeyID, "
                        "InCollection) VALUES (?, ?, ?, ?, ?, ?, 1)");
        for (int i = 0; i < m_works; ++i) {
            const int composer = skewed(m_composers);
            m_composerOf.push_back(composer);
            insert(work, composer,
                   std::string(forms[below(int(std::size(forms)))]) + " No. " +
                       std::to_string(1 + below(40)) + " " + name(3),
                   std::to_string(1 + below(300)), std::to_string(1600 + below(400)),
                   1 + below(int(std::size(forms))), below(31));
        }
    }

    void recordings() {
        SQLite::Statement recording(
            m_database, "INSERT INTO Rec (RecTitle, LabelID, SupportID, SourceID, ProdNbr, Notes, Rating, "
                        "UnitsNbr, AddDate) VALUES (?, ?, ?, ?, ?, ?, 'Good', ?, '2020-01-01 12:00:00')");
        SQLite::Statement composer(m_database, "INSERT INTO CpsOnRec (CpsID, RecID) VALUES (?, ?)");
        SQLite::Statement performer(m_database, "INSERT INTO PfrOnRec (PfrID, RecID, Pos) VALUES (?, ?, ?)");
        SQLite::Statement work(m_database,
                               "INSERT INTO CompOnRec (RecID, CpsID, CompID, Pos) VALUES (?, ?, ?, ?)");
        SQLite::Statement role(m_database,
                               "INSERT INTO CompOnRecPfr (CompOnRecID, PfrID, PersonageID) VALUES (?, ?, 0)");
        SQLite::Statement track(m_database,
                                "INSERT INTO Tracks (RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES "
                                "(?, ?, ?, ?, '04:30')");
        int entry = 0;
        for (int id = 1; id <= m_recordings; ++id) {
            const int discs = below(10) == 0 ? 2 + below(4) : 1;
            insert(recording, name(2) + ": " + forms[below(int(std::size(forms)))] + " " + name(3),
                   below(20) == 0 ? 0 : skewed(labels), below(50) == 0 ? 0 : 1 + below(11), below(5),
                   std::to_string(100000 + below(800000)), below(8) == 0 ? name(8) : std::string(), discs);
            const int cast = 1 + below(4);
            std::vector<int> performers;
            for (int i = 0; i < cast; ++i) {
                const int who = skewed(m_performers);
                if (std::find(performers.begin(), performers.end(), who) == performers.end()) {
                    performers.push_back(who);
                    insert(performer, who, id, int(performers.size()));
                }
            }
            const int pieces = 1 + below(4);
            std::vector<int> composers;
            for (int i = 1; i <= pieces; ++i) {
                const int which = 1 + below(m_works);
                const int who = m_composerOf[size_t(which) - 1];
                if (std::find(composers.begin(), composers.end(), who) == composers.end()) {
                    composers.push_back(who);
                    insert(composer, who, id);
                }
                insert(work, id, who, which, i);
                ++entry;
                for (const int one : performers)
                    insert(role, entry, one);
            }
            for (int disc = 1; disc <= discs; ++disc) {
                const int tracks = below(30) == 0 ? 0 : 4 + below(10);
                for (int i = 1; i <= tracks; ++i)
                    insert(track, id, disc, i, std::to_string(i) + ". " + name(4));
            }
        }
    }

    void classes() {
        SQLite::Statement category(m_database, "INSERT INTO RecClass (RecClassName) VALUES (?)");
        for (int i = 0; i < categories; ++i)
            insert(category, name(2));
        SQLite::Statement subCategory(m_database,
                                      "INSERT INTO RecSubCat (RecClassID, RecSubCatName) VALUES (?, ?)");
        for (int i = 0; i < subCategories; ++i)
            insert(subCategory, 1 + i % categories, name(3));
        SQLite::Statement join(m_database, "INSERT INTO RecSubCatJoin (RecID, RecSubCatID) VALUES (?, ?)");
        for (int id = 1; id <= m_recordings; ++id) {
            std::vector<int> in(size_t(below(6)));
            for (int& one : in)
                one = 1 + below(subCategories);
            std::sort(in.begin(), in.end());
            in.erase(std::unique(in.begin(), in.end()), in.end());
            for (const int one : in)
                insert(join, id, one);
        }
        SQLite::Statement custom(m_database, "INSERT INTO UserDef (UserDefTitle) VALUES (?)");
        for (int i = 0; i < std::max(m_recordings / 100, 10); ++i)
            insert(custom, name(4));
    }

    static constexpr int labels = 600;
    static constexpr int categories = 50;
    static constexpr int subCategories = 300;
    SQLite::Database m_database;
    std::mt19937 m_random;
    int m_recordings;
    int m_composers;
    int m_performers;
    int m_works;
    std::vector<int> m_composerOf;
};

} // namespace

void generateCatalog(const QString& path, int recordings, quint32 seed) {
    writeCatalogTemplate(path, {{englishLanguage, 1, QStringLiteral("C major")}});
    Generator(path, recordings, seed).run();
}

} // namespace tessaranth
