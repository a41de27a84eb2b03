-- SPDX-License-Identifier: GPL-3.0-or-later
-- A small catalog for the tests of the statements, in plain SQLite, over the tables of
-- data/schema/catalog.sql. Nearly every link occurs in three forms: to a row, to none (0 or Null), and
-- to a row that is gone, so that inner, left and right joins answer differently.

-- Gounod has no works; Dvořák's name has letters beyond ASCII and an accent.
INSERT INTO Cps (CpsID, CpsLname, CpsFname, CpsY, CpsB, CpsD, CatAcr, wkl, LastState) VALUES
    (1, 'Verdi', 'Giuseppe', '1813 - 1901', '1813', '1901', NULL, 0, 3),
    (2, 'Dvořák', 'Antonín', '1841 - 1904', '1841', '1904', 'B', 0, 0),
    (3, 'Gounod', 'Charles', NULL, NULL, NULL, '', 1, NULL);
-- Nobody engaged Nilsson: she is on no recording.
INSERT INTO Pfr (PfrID, PfrLname, PfrFname, PfrB, PfrD, TSC, LastState) VALUES
    (1, 'Abbado', 'Claudio', '1933', '2014', 0, 4),
    (2, 'Callas', 'Maria', '1923', '1977', 0, 0),
    (3, 'Kertész', 'István', '1929', NULL, NULL, NULL),
    (4, 'Nilsson', 'Birgit', NULL, NULL, 0, 0);
INSERT INTO Labels (LabelID, LabelName) VALUES (1, 'Decca'), (2, 'EMI'), (3, 'O''Neil & Sons');
INSERT INTO Sources (SourceID, SourceType) VALUES (1, 'Bought'), (2, 'Gift');
INSERT INTO Genres (GenreID, GenreName) VALUES (1, 'Opera'), (2, 'Symphony'), (3, 'Unused');
INSERT INTO CpsGenres (CpsGenreID, CpsID, CpsGenreName, wkl) VALUES
    (1, 1, 'Operas', 0), (2, 2, 'Symphonies', 0), (3, 2, 'Concertos', 1);
INSERT INTO MainWorks (MainWorkID, CpsID, MainWorkName, wkl) VALUES
    (1, 1, 'Trilogy', 0), (2, 2, 'Late symphonies', 1), (3, 2, 'Overtures', 0), (4, 8, 'Lost', 0);

-- 4 has no genres and a main work that is gone, 5 has Nulls for them and a genre that is gone; the composer
-- of 6 is gone.
INSERT INTO Compositions (CompID, CpsID, CompTitle, CompSubTitle, CompNbr, CompYear, GenreID, CpsGenreID,
    MainWorkID, Descr, Pers, InCollection, wkl, KeyID) VALUES
    (1, 1, 'Rigoletto', 'after Hugo', NULL, '1851', 1, 1, 1, 'Set in Mantua', 1, 1, 0, 0),
    (2, 1, 'La traviata', NULL, '', '1853', 1, 1, 1, NULL, 1, 1, 0, 2),
    (3, 2, 'Symphony no. 9', 'From the new world', '178', '1893', 2, 2, 2, '', 0, 1, 1, 15),
    (4, 2, 'Humoresque', '', '187', '1894', 0, 0, 77, NULL, 0, 0, 0, 0),
    (5, 1, 'Requiem', NULL, NULL, NULL, 9, NULL, NULL, NULL, 0, 0, 0, NULL),
    (6, 8, 'Orphaned', NULL, '1', NULL, 2, 3, 3, NULL, 0, 0, 1, 15);
INSERT INTO Personages (PersonageID, CompID, PersonageName) VALUES
    (1, 1, 'Gilda'), (2, 1, 'Duke of Mantua'), (3, 2, 'Violetta'), (4, 9, 'Nobody');

-- 2 has a rating as old catalogs write it, 3 no label, carrier or source; 4 has Nulls and nothing hangs on
-- it.
INSERT INTO Rec (RecID, RecTitle, LabelID, SupportID, SourceID, ProdNbr, Notes, Rating, RecSubTitle, Barcode,
    LocationCode, UnitsNbr, Spars, RelDate, Price, RefRec, AddDate, ModDate, LastState, LastStateRec,
    LastStateRecSplitterPos) VALUES
    (1, 'Rigoletto', 2, 2, 1, 'SAX 1', 'mono', 'Good', 'complete', '5099', 'A1', 2, 'AAD', '1955', '20', 1,
     '2003-01-02 10:00:00', '2003-02-03 11:00:00', 1, 2, 40),
    (2, 'New World', 1, 1, 2, '414-2', NULL, '5', NULL, NULL, NULL, 1, 'ADD', '1967', NULL, 0,
     '2003-01-03 10:00:00', NULL, 0, 0, 50),
    (3, 'élan', 0, 0, 0, '', '', '', '', '', '', 1, 'N/A', '', '', 0, NULL, NULL, 0, 0, 50),
    (4, 'Bare', NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, NULL, 0, NULL, NULL,
     NULL, NULL, NULL);
INSERT INTO CpsOnRec (CpsID, RecID) VALUES (1, 1), (2, 2), (1, 3), (2, 3), (3, 9);
INSERT INTO PfrOnRec (PfrID, RecID, Pos) VALUES (2, 1, 1), (1, 1, 2), (3, 2, 1), (1, 3, NULL), (9, 3, 2);
-- 4 is an excerpt without a work, 5 is on a recording that is gone.
INSERT INTO CompOnRec (CompOnRecID, RecID, CpsID, CompID, Pos, ExtraitName) VALUES
    (1, 1, 1, 1, 1, 'Caro nome'), (2, 2, 2, 3, 1, NULL), (3, 3, 1, 1, 2, ''), (4, 3, 2, 99, 1, 'Largo'),
    (5, 9, 1, 2, 1, NULL);
INSERT INTO CompOnRecPfr (CompOnRecID, PfrID, PersonageID) VALUES
    (1, 2, 1), (1, 1, 0), (2, 3, NULL), (3, 1, 2), (3, 1, 2), (4, 3, 0), (5, 2, 3), (77, 4, 0);
INSERT INTO Tracks (TrackID, RecID, Disc, TrackNbr, TrackName, TrackLen) VALUES
    (1, 1, 2, 1, 'Atto terzo', '4:10'), (2, 1, 1, 2, 'Caro nome', '5:30'), (3, 1, 1, 1, 'Preludio', '2:05'),
    (4, 2, 1, 1, 'Adagio', '11:00'), (5, 9, 1, 1, 'Lost', '0:01');
INSERT INTO DiscIds (DiscIdID, RecID, DiscNbr, DiscId) VALUES
    (1, 1, 1, '7a0b1c02'), (2, 1, 2, '1302aa01'), (3, 9, 1, 'ffffffff');

INSERT INTO Images (ImageID, RelatedCat, RelatedID, ImageTitle, OrderNbr) VALUES
    (1, 'Rec', 1, 'Back', 2), (2, 'Rec', 1, 'Cover', 1), (3, 'Cps', 1, 'Portrait', 1), (4, 'Pfr', 1, NULL, 1),
    (5, 'UserDef', 1, 'Map', 1);
INSERT INTO Cards (CardID, RelatedCat, RelatedID, CardTitle, OrderNbr) VALUES
    (1, 'Rec', 1, 'Booklet', 1), (2, 'Cps', 1, 'Life', 1), (3, 'Cps', 2, 'Letters', 1),
    (4, 'Comp', 1, 'Descr', 1), (5, 'Comp', 3, 'Descr', 1), (6, 'Pfr', 2, 'Roles', 1), (7, 'Rec', 1, 'Review', NULL),
    (8, 'Comp', 98, 'Descr', 1);
INSERT INTO Media (MediaID, RelatedCat, RelatedID, MediaTitle, MediaFile, MediaFolder, MediaSize, MediaType,
    VolumeName, VolumeType) VALUES
    (1, 'Rec', 1, 'Storm', 'storm.mp3', 'C:\music\verdi', 100, 'MP3', 'SYSTEM', 'Fixed'),
    (2, 'Cps', 1, 'Speech', 'speech.wav', 'D:\music', 200, 'WAV', NULL, NULL),
    (3, 'Rec', 1, 'Aria', 'aria_1.mp3', 'C:\music', 300, 'MP3', 'SYSTEM', 'Fixed'),
    (4, 'Pfr', 7, NULL, NULL, NULL, NULL, NULL, NULL, NULL);
INSERT INTO Web (WebID, RelatedCat, RelatedID, Url, Alias) VALUES
    (1, 'Cps', 1, 'http://example.org/v', 'Museum'), (2, 'Rec', 1, 'http://example.org/r', NULL),
    (3, 'UserDef', 1, 'http://example.org/u', 'City');

INSERT INTO UserDef (UserDefID, UserDefTitle, LastState) VALUES (1, 'La Scala', 0), (2, 'Bayreuth', NULL);
INSERT INTO Relations (UserDefID, ItemType, ItemID) VALUES
    (1, 'Cps', 1), (1, 'Pfr', 2), (1, 'Rec', 1), (2, 'Cps', 1);
INSERT INTO CpsClass (CpsClassID, CpsClassName) VALUES (1, 'Period'), (2, 'Country'), (3, 'Empty');
INSERT INTO CpsSubCat (CpsSubCatID, CpsClassID, CpsSubCatName) VALUES
    (1, 1, 'Romantic'), (2, 2, 'Italy'), (3, 2, 'Bohemia'), (4, 9, 'Lost');
INSERT INTO CpsSubCatJoin (CpsID, CpsSubCatID) VALUES (1, 1), (1, 2), (2, 1), (2, 3), (9, 1);
INSERT INTO PfrClass (PfrClassID, PfrClassName) VALUES (1, 'Kind'), (2, 'Voice');
INSERT INTO PfrSubCat (PfrSubCatID, PfrClassID, PfrSubCatName) VALUES (1, 1, 'Conductor'), (2, 2, 'Soprano');
INSERT INTO PfrSubCatJoin (PfrID, PfrSubCatID) VALUES (1, 1), (2, 2), (3, 1);
INSERT INTO RecClass (RecClassID, RecClassName) VALUES (1, 'Genre'), (2, 'Shelf');
INSERT INTO RecSubCat (RecSubCatID, RecClassID, RecSubCatName) VALUES (1, 1, 'Opera'), (2, 1, 'Orchestra');
INSERT INTO RecSubCatJoin (RecID, RecSubCatID) VALUES (1, 1), (2, 2), (3, 1);
INSERT INTO UserDefClass (UserDefClassID, UserDefClassName) VALUES (1, 'Places'), (2, 'Books');
INSERT INTO UserDefSubCat (UserDefSubCatID, UserDefClassID, UserDefSubCatName) VALUES
    (1, 1, 'Theatres'), (2, 2, 'Scores'), (3, 9, 'Lost');
INSERT INTO UserDefSubCatJoin (UserDefID, UserDefSubCatID) VALUES (1, 1), (1, 3);

INSERT INTO Catalogs (CatalogID, CpsID, CpsName, FileName, DateAdded) VALUES
    (1, 2, 'Dvořák Antonín', 'Dvorak.tcat', '2003-03-04 12:00:00');
INSERT INTO DbUpgrades (DbUpgradeCode) VALUES (236543), (236544);
INSERT INTO WKeys (WKeysID, LangID, KeyID, KeyName) VALUES
    (1, 9, 0, ''), (2, 9, 2, 'D major'), (3, 9, 15, 'E minor'), (4, 16, 15, 'Mi minore');
