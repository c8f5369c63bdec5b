#include "ControlsTest.h"

#include "platform/controls/DataControl.h"
#include "platform/jet/Database.h"

#include <QLabel>
#include <QTemporaryDir>
#include <QToolButton>

using namespace controls;

namespace {

/// Controls over the rows of a database.
class DataTest : public ControlsTest {
  protected:
    DataTest() {
        database = jet::Database::createFile(folder.filePath(u"Tried.mdb"_qs));
        useDatabase(*database);
        database->execute(u"CREATE TABLE Customer (ID COUNTER PRIMARY KEY, Company TEXT(30))"_qs);
        for (const char16_t* name : {u"Acme", u"Bolt", u"acme", u"Cog"})
            database->execute(
                u"INSERT INTO Customer (Company) VALUES ('%1')"_qs.arg(QString::fromUtf16(name)));
        auto* made = build();
        screen::Fields fields(made);
        combo = fields.dataCombo(u"dbcCustomer"_qs, u"&Customer:"_qs);
        data = new DataControl(made);
        fields.add(data, u"datCustomer"_qs);
        data->reposition.connect(
            [this] { seen << (data->recordset().isEmpty() ? u"-"_qs : name()); });
        data->setRecordset(database->openRecordset(u"SELECT * FROM Customer ORDER BY ID"_qs));
        show();
    }
    QString name() { return data->recordset().text(u"Company"); }
    QString walked() {
        const QString all = seen.join(u' ');
        seen.clear();
        return all;
    }
    QTemporaryDir folder;
    std::unique_ptr<jet::Database> database;
    DataCombo* combo;
    DataControl* data;
    QStringList seen;
};

TEST_F(DataTest, ArrowsAndKeysWalkTheRowsAndStopAtTheEnds) {
    EXPECT_EQ(walked(), u"Acme"_qs);
    for (int i = 0; i < 2; ++i)
        key(Qt::Key_Right, Qt::AltModifier);
    key(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(walked(), u"Bolt acme Bolt"_qs);
    data->moveLast();
    data->moveNext();
    EXPECT_EQ(walked(), u"Cog"_qs);
    EXPECT_TRUE(data->findFirst(u"ID = 1"_qs));
    EXPECT_FALSE(data->findFirst(u"ID = 99"_qs));
    data->movePrevious();
    EXPECT_EQ(walked(), u"Acme"_qs);
    EXPECT_EQ(name(), u"Acme"_qs);
    data->setEnabled(false);
    key(Qt::Key_Right, Qt::AltModifier);
    EXPECT_EQ(walked(), QString());
}

TEST_F(DataTest, ARequeryComesBackToItsRowOrToTheNeighbour) {
    data->findFirst(u"ID = 3"_qs);
    database->execute(u"DELETE FROM Customer WHERE ID = 1"_qs);
    walked();
    data->requeryKeepingRow();
    EXPECT_EQ(walked(), u"acme"_qs);
    EXPECT_EQ(data->recordset().recordCount(), 3);
    database->execute(u"DELETE FROM Customer WHERE ID = 3"_qs);
    data->requeryKeepingRow();
    EXPECT_EQ(walked(), u"Cog"_qs);
    data->refresh();
    EXPECT_EQ(walked(), u"Bolt"_qs);
    database->execute(u"DELETE FROM Customer"_qs);
    data->requeryKeepingRow();
    data->moveNext();
    data->moveFirst();
    EXPECT_EQ(walked(), u"-"_qs);
}

TEST_F(DataTest, WhatFailsUnderAnArrowIsARunTimeError) {
    data->reposition.connect([this] { data->recordset().text(u"NoSuchField"); });
    expectRunTimeError(jet::errors::itemNotFound);
    const auto arrows = data->findChildren<QToolButton*>();
    arrows.at(2)->click();
}

TEST_F(DataTest, AComboTellsEqualNamesApartByTheirKeys) {
    combo->setRows(database->openRecordset(u"SELECT Company, ID FROM Customer ORDER BY ID"_qs),
                   u"Company"_qs, u"ID"_qs);
    combo->setBoundText(u"3"_qs);
    EXPECT_EQ(combo->text(), u"acme"_qs);
    EXPECT_EQ(combo->boundText(), u"3"_qs);
    database->execute(u"INSERT INTO Customer (Company) VALUES ('Dial')"_qs);
    combo->setRows(database->openRecordset(u"SELECT Company, ID FROM Customer ORDER BY ID DESC"_qs),
                   u"Company"_qs, u"ID"_qs);
    EXPECT_EQ(combo->boundText(), u"3"_qs);
    type(u"dbcCustomer"_qs, u"bolt"_qs);
    leave();
    EXPECT_EQ(combo->boundText(), u"2"_qs);
    combo->setBoundText(u"77"_qs);
    EXPECT_EQ(combo->text(), QString());
    EXPECT_EQ(rows(u"SELECT ID, Company FROM Customer WHERE ID > 3 ORDER BY ID"_qs),
              QStringList({u"4|Cog"_qs, u"5|Dial"_qs}));
}

} // namespace
