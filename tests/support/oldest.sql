--SPDX - License - Identifier : GPL - 3.0 - or -later-- A catalog of the oldest version
    : the base tables only,
    and rows as its users left them, with ratings as-- digits, columns that are Null,
    and media files named by their whole path.

        CREATE TABLE
        Cps(CpsID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, CpsLname VARCHAR(250), CpsFname VARCHAR(250),
            CpsY VARCHAR(20), CpsB VARCHAR(10), CpsD VARCHAR(10), CatAcr VARCHAR(20));
CREATE TABLE Pfr(PfrID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, PfrLname VARCHAR(250),
                 PfrFname VARCHAR(250), PfrB VARCHAR(10), PfrD VARCHAR(10));
CREATE TABLE Rec(RecID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, RecTitle VARCHAR(250) NOT NULL,
                 LabelID INTEGER DEFAULT 0, SupportID INTEGER DEFAULT 0, SourceID INTEGER DEFAULT 0,
                 ProdNbr VARCHAR(50), Notes TEXT, Rating VARCHAR(1));
CREATE TABLE UserDef(UserDefID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, UserDefTitle VARCHAR(250));
CREATE TABLE Compositions(CompID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, CpsID INTEGER DEFAULT 0,
                          CompTitle VARCHAR(250), CompSubTitle VARCHAR(250), CompNbr VARCHAR(20),
                          CompYear VARCHAR(20), GenreID INTEGER DEFAULT 0, CpsGenreID INTEGER DEFAULT 0,
                          MainWorkID INTEGER DEFAULT 0, Descr TEXT, Pers BOOLEAN NOT NULL DEFAULT 0,
                          InCollection BOOLEAN NOT NULL DEFAULT 0);
CREATE TABLE MainWorks(MainWorkID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, CpsID INTEGER DEFAULT 0,
                       MainWorkName VARCHAR(250));
CREATE TABLE CpsGenres(CpsGenreID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, CpsID INTEGER DEFAULT 0,
                       CpsGenreName VARCHAR(250));
CREATE TABLE Personages(PersonageID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, CompID INTEGER DEFAULT 0,
                        PersonageName VARCHAR(250));
CREATE TABLE Genres(GenreID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, GenreName VARCHAR(250));
CREATE TABLE Labels(LabelID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, LabelName VARCHAR(250));
CREATE TABLE Supports(SupportID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, SupportType VARCHAR(50),
                      IconName VARCHAR(50));
CREATE TABLE Sources(SourceID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, SourceType VARCHAR(50));

CREATE TABLE CpsOnRec(CpsID INTEGER DEFAULT 0, RecID INTEGER DEFAULT 0);
CREATE TABLE PfrOnRec(PfrID INTEGER DEFAULT 0, RecID INTEGER DEFAULT 0);
CREATE TABLE CompOnRec(CompOnRecID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, RecID INTEGER DEFAULT 0,
                       CpsID INTEGER DEFAULT 0, CompID INTEGER DEFAULT 0, Pos INTEGER DEFAULT 0,
                       ExtraitName VARCHAR(250));
CREATE TABLE CompOnRecPfr(CompOnRecID INTEGER DEFAULT 0, PfrID INTEGER DEFAULT 0,
                          PersonageID INTEGER DEFAULT 0);

CREATE TABLE Images(ImageID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, RelatedCat VARCHAR(10),
                    RelatedID INTEGER DEFAULT 0, ImageTitle VARCHAR(250), OrderNbr INTEGER DEFAULT 0);
CREATE TABLE Cards(CardID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, RelatedCat VARCHAR(10),
                   RelatedID INTEGER DEFAULT 0, CardTitle VARCHAR(250), OrderNbr INTEGER DEFAULT 0);
CREATE TABLE Media(MediaID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, RelatedCat VARCHAR(10),
                   RelatedID INTEGER DEFAULT 0, MediaTitle VARCHAR(50), MediaFile VARCHAR(250));
CREATE TABLE Web(WebID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, RelatedCat VARCHAR(10),
                 RelatedID INTEGER DEFAULT 0, Url TEXT, Alias VARCHAR(250));
CREATE TABLE Relations(UserDefID INTEGER DEFAULT 0, ItemType VARCHAR(10), ItemID INTEGER DEFAULT 0);

CREATE TABLE CpsClass(CpsClassID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, CpsClassName VARCHAR(50));
CREATE TABLE CpsSubCat(CpsSubCatID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, CpsClassID INTEGER DEFAULT 0,
                       CpsSubCatName VARCHAR(50));
CREATE TABLE CpsSubCatJoin(CpsID INTEGER DEFAULT 0, CpsSubCatID INTEGER DEFAULT 0);
CREATE TABLE PfrClass(PfrClassID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, PfrClassName VARCHAR(50));
CREATE TABLE PfrSubCat(PfrSubCatID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, PfrClassID INTEGER DEFAULT 0,
                       PfrSubCatName VARCHAR(50));
CREATE TABLE PfrSubCatJoin(PfrID INTEGER DEFAULT 0, PfrSubCatID INTEGER DEFAULT 0);
CREATE TABLE RecClass(RecClassID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, RecClassName VARCHAR(50));
CREATE TABLE RecSubCat(RecSubCatID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT, RecClassID INTEGER DEFAULT 0,
                       RecSubCatName VARCHAR(50));
CREATE TABLE RecSubCatJoin(RecID INTEGER DEFAULT 0, RecSubCatID INTEGER DEFAULT 0);
CREATE TABLE UserDefClass(UserDefClassID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
                          UserDefClassName VARCHAR(50));
CREATE TABLE UserDefSubCat(UserDefSubCatID INTEGER NOT NULL PRIMARY KEY AUTOINCREMENT,
                           UserDefClassID INTEGER DEFAULT 0, UserDefSubCatName VARCHAR(50));
CREATE TABLE UserDefSubCatJoin(UserDefID INTEGER DEFAULT 0, UserDefSubCatID INTEGER DEFAULT 0);

INSERT INTO Cps VALUES(1, 'Bach', 'Johann Sebastian', '1685-1750', '1685', '1750', 'BWV'),
    (2, 'Dvořák', 'Antonín', NULL, NULL, NULL, NULL), (3, 'd' 'Indy', NULL, '?-?', '', '', '');
INSERT INTO Pfr VALUES(1, 'Gould', 'Glenn', '1932', '1982'), (2, 'Wiener Philharmoniker', NULL, NULL, NULL);
INSERT INTO Supports VALUES(1, 'CD', 'Cd'), (2, 'LP', 'Lp'), (3, 'Cassette', 'Cassette'),
    (4, 'MiniDisc', 'MiniDisc'), (5, 'DAT', 'Dat'), (6, 'DVD', 'Dvd'), (7, 'VHS', 'Vhs'),
    (8, 'LaserDisc', 'LaserDisc');
INSERT INTO Rec(RecID, RecTitle, LabelID, SupportID, SourceID, ProdNbr, Notes, Rating)
    VALUES(1, 'Goldberg Variations', 1, 1, 0, NULL, NULL, '3'),
    (2, 'Unrated', 0, 0, 0, '', 'a note', ''), (3, 'Never rated', 0, NULL, 0, NULL, NULL, NULL),
    (4, 'Poor', 0, 2, 0, NULL, NULL, '1'), (5, 'Fair', 0, 2, 0, NULL, NULL, '2'),
    (6, 'Very good', 0, 2, 0, NULL, NULL, '4'), (7, 'Excellent', 0, 2, 0, NULL, NULL, '5');
INSERT INTO Labels VALUES(1, 'Columbia');
INSERT INTO Compositions(CompID, CpsID, CompTitle, CompNbr, InCollection)
    VALUES(1, 1, 'Goldberg Variations', '988', 1),
    (2, 2, 'Rusalka', NULL, 0);
INSERT INTO MainWorks VALUES(1, 1, 'Clavier-Übung');
INSERT INTO CpsGenres VALUES(1, 1, 'Keyboard');
INSERT INTO PfrOnRec VALUES(1, 1), (2, 2);
INSERT INTO CpsOnRec VALUES(1, 1);
INSERT INTO CompOnRec VALUES(1, 1, 1, 1, 1, NULL);
INSERT INTO UserDef VALUES(1, 'Wish list');
INSERT INTO Media VALUES(1, 'Rec', 1, 'Aria', 'D:\Music\Gould\aria.mp3'),
    (2, 'Rec', 1, 'Gone', '/nowhere/at/all.flac');
--A card that was deleted : its number must never come again.INSERT INTO Rec(RecID, RecTitle)
                                VALUES(90, 'Deleted');
DELETE FROM Rec WHERE RecID = 90;
