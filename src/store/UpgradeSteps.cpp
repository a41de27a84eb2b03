// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/UpgradeSteps.h"

namespace tessaranth {

namespace {

// clang-format off
const AddedTable tables[] = {
    {"DbUpgrades", "CREATE TABLE DbUpgrades( " "DbUpgradeID   COUNTER   NOT NULL, "
                   "DbUpgradeCode   LONG  NOT NULL, " "CONSTRAINT   DbUpgrade_PK  PRIMARY KEY  (DbUpgradeID))"},
    {"Tracks", "CREATE TABLE Tracks( " "TrackID   COUNTER   NOT NULL, " "RecID   LONG  NOT NULL, "
               "Disc   LONG  NOT NULL, " "TrackNbr   LONG  NOT NULL, " "TrackName   VarChar(250)  NOT NULL, "
               "TrackLen   VarChar(5)  NOT NULL, " "CONSTRAINT   Tracks_PK  PRIMARY KEY  (TrackID))"},
    {"Catalogs", "CREATE TABLE Catalogs( " "CatalogID   COUNTER   NOT NULL, " "CpsID   LONG  NOT NULL, "
                 "CpsName   VarChar(250)  NOT NULL, " "FileName   VarChar(250)  NOT NULL, "
                 "DateAdded   Date  NOT NULL, " "CONSTRAINT   Catalog_PK  PRIMARY KEY  (CatalogID))"},
    {"WKeys", "CREATE TABLE WKeys( " "WKeysID   COUNTER   NOT NULL, " "LangID   LONG  NOT NULL, "
              "KeyID   LONG  NOT NULL, " "KeyName   VarChar(50)  NOT NULL, "
              "CONSTRAINT   WKeys_PK  PRIMARY KEY  (WKeysID))"},
    {"DiscIds", "CREATE TABLE DiscIds( " "DiscIdID   COUNTER   NOT NULL, " "RecID   LONG  NOT NULL, "
                "DiscNbr   LONG  NOT NULL, " "DiscId   VarChar(12)  NOT NULL, "
                "CONSTRAINT   DiscIds_PK  PRIMARY KEY  (DiscIdID))"},
};

const char* const keyData[] = {"UPDATE Compositions SET KeyID = 0 WHERE IsNull(KeyID)"};
const char* const tscData[] = {"UPDATE Pfr SET TSC = 0 WHERE IsNull(TSC)"};
const char* const posData[] = {"UPDATE PfrOnRec SET Pos = 0 WHERE IsNull(Pos)"};
const char* const subTitleData[] = {"UPDATE Rec SET RecSubTitle = \"\" WHERE IsNull(RecSubTitle)"};
const char* const barcodeData[] = {"UPDATE Rec SET Barcode = \"\" WHERE IsNull(Barcode)"};
const char* const locationData[] = {"UPDATE Rec SET LocationCode = \"\" WHERE IsNull(LocationCode)"};
const char* const unitsData[] = {"UPDATE Rec SET UnitsNbr = 1 WHERE IsNull(UnitsNbr)"};
const char* const sparsData[] = {"UPDATE Rec SET Spars = 'N/A' WHERE IsNull(Spars)"};
const char* const relDateData[] = {"UPDATE Rec SET RelDate = \"\" WHERE IsNull(RelDate)"};
const char* const priceData[] = {"UPDATE Rec SET Price = \"\" WHERE IsNull(Price)"};
const char* const addDateData[] = {"UPDATE Rec SET AddDate = Now WHERE IsNull(AddDate)"};
const char* const ratingData[] = {
    "UPDATE Rec SET Rating = 'N/A' WHERE IsNull(Rating)",
    "UPDATE Rec SET Rating = 'N/A' WHERE Rating = \"\"",
    "UPDATE Rec SET Rating = 'Poor' WHERE Rating = '1'",
    "UPDATE Rec SET Rating = 'Fair' WHERE Rating = '2'",
    "UPDATE Rec SET Rating = 'Good' WHERE Rating = '3'",
    "UPDATE Rec SET Rating = 'Very good' WHERE Rating = '4'",
    "UPDATE Rec SET Rating = 'Excellent' WHERE Rating = '5'"};
const char* const cpsStateData[] = {"UPDATE Cps SET LastState = 0 WHERE IsNull(LastState)"};
const char* const pfrStateData[] = {"UPDATE Pfr SET LastState = 0 WHERE IsNull(LastState)"};
const char* const recStateData[] = {"UPDATE Rec SET LastState = 0 WHERE IsNull(LastState)"};
const char* const userDefStateData[] = {"UPDATE UserDef SET LastState = 0 WHERE IsNull(LastState)"};
const char* const recContentsStateData[] = {"UPDATE Rec SET LastStateRec = 0 WHERE IsNull(LastStateRec)"};
const char* const splitterData[] = {
    "UPDATE Rec SET LastStateRecSplitterPos = 50 WHERE IsNull(LastStateRecSplitterPos)"};
const char* const supportsData[] = {
    "UPDATE Supports SET DefIcon = True WHERE SupportID <= 8",
    "INSERT INTO Supports (SupportType, IconName, DefIcon) " "VALUES('Sacd', 'Sacd', True)",
    "INSERT INTO Supports (SupportType, IconName, DefIcon) " "VALUES('BluRay', 'BluRay', True)",
    "INSERT INTO Supports (SupportType, IconName, DefIcon) " "VALUES('HdDvd', 'HdDvd', True)"};

const char* const historyData[] = {"INSERT INTO TsrHistory (HistoryID, Token) VALUES(1, 0)"};

using enum UpgradeStep::Change;

const UpgradeStep steps[] = {
    {236543, AddColumn, "Compositions", "wkl", "BIT", "FALSE", 0, {}},
    {236565, AddColumn, "Compositions", "KeyID", "LONG", "0", 0, keyData},
    {236544, AddColumn, "CpsGenres", "wkl", "BIT", "FALSE", 0, {}},
    {236545, AddColumn, "MainWorks", "wkl", "BIT", "FALSE", 0, {}},
    {236546, AddColumn, "Cps", "wkl", "BIT", "FALSE", 0, {}},
    {236547, AddColumn, "Pfr", "TSC", "LONG", "0", 0, tscData},
    {236548, AddColumn, "PfrOnRec", "Pos", "LONG", "0", 0, posData},
    {236549, AddColumn, "Rec", "RecSubTitle", "VARCHAR(250)", "", 0, subTitleData},
    {236550, AddColumn, "Rec", "Barcode", "VARCHAR(20)", "", 0, barcodeData},
    {236551, AddColumn, "Rec", "LocationCode", "VARCHAR(20)", "", 0, locationData},
    {236552, AddColumn, "Rec", "UnitsNbr", "LONG", "1", 0, unitsData},
    {236553, AddColumn, "Rec", "Spars", "VARCHAR(3)", "N/A", 0, sparsData},
    {236554, AddColumn, "Rec", "RelDate", "VARCHAR(20)", "", 0, relDateData},
    {236555, AddColumn, "Rec", "Price", "VARCHAR(10)", "", 0, priceData},
    {236556, AddColumn, "Rec", "RefRec", "BIT", "FALSE", 0, {}},
    {236557, AddColumn, "Rec", "AddDate", "DATE", "", 0, addDateData},
    {236558, AddColumn, "Rec", "ModDate", "DATE", "", 0, {}},
    {236559, ChangeTypeAndDefault, "Rec", "Rating", "VARCHAR(10)", "N/A", 0, ratingData},
    {236560, AddColumn, "Cps", "LastState", "LONG", "0", 0, cpsStateData},
    {236561, AddColumn, "Pfr", "LastState", "LONG", "0", 0, pfrStateData},
    {236562, AddColumn, "Rec", "LastState", "LONG", "0", 0, recStateData},
    {236563, AddColumn, "UserDef", "LastState", "LONG", "0", 0, userDefStateData},
    {236564, AddColumn, "Rec", "LastStateRec", "LONG", "0", 0, recContentsStateData},
    {236566, AddColumn, "Rec", "LastStateRecSplitterPos", "LONG", "50", 0, splitterData},
    {236567, AddColumn, "Supports", "DefIcon", "BIT", "FALSE", 0, supportsData},
    {236568, ChangeWidth, "Compositions", "CompNbr", "VARCHAR", "", 50, {}},
    {236569, Media, "Media", "MediaTitle", "VARCHAR", "", 250, {}},
    {900001, AddTable, "TsrHistory", "", "CREATE TABLE TsrHistory( " "HistoryID   COUNTER   NOT NULL, " "Token   LONG  NOT NULL, "
                                         "CONSTRAINT   TsrHistory_PK  PRIMARY KEY  (HistoryID))", "", 0, historyData},
};

const MediaColumn columnsOfMedia[] = {{"MediaFolder", "VARCHAR(250)", ""}, {"MediaSize", "LONG", "0"},
    {"MediaType", "VARCHAR(250)", ""}, {"VolumeName", "VARCHAR(33)", ""}, {"VolumeType", "VARCHAR(20)", ""}};
// clang-format on

} // namespace

std::span<const AddedTable> addedTables() { return tables; }
std::span<const UpgradeStep> upgradeSteps() { return steps; }
std::span<const MediaColumn> mediaColumns() { return columnsOfMedia; }

} // namespace tessaranth
