#include "core/MirsaMain.h"
#include "estimating/EstimateStore.h"
#include "jobs/JobStore.h"
#include "masters/Screens.h"
#include "platform/values/Literals.h"
#include "purchasing/PoStore.h"
#include "support/ShopFixture.h"

#include <sqlite3.h>

#include <functional>
#include <map>

namespace {

/// The file system as SQLite sees it, on which from some write on there is no room.
class FullDisk {
  public:
    FullDisk() {
        usual() = sqlite3_vfs_find(nullptr);
        m_vfs = *usual();
        m_vfs.zName = "full";
        m_vfs.xOpen = [](sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* out) {
            const int result = usual()->xOpen(usual(), name, file, flags, out);
            if (result == SQLITE_OK && file->pMethods) {
                // All files of one kind share their methods.
                static std::map<const sqlite3_io_methods*, sqlite3_io_methods> ours;
                const sqlite3_io_methods* theirs = file->pMethods;
                sqlite3_io_methods& mine = ours[theirs];
                mine = *theirs;
                usualOf()[&mine] = theirs;
                mine.xWrite = [](sqlite3_file* to, const void* data, int size, sqlite3_int64 at) {
                    if (left() == 0)
                        return SQLITE_FULL;
                    --left();
                    return usualOf()[to->pMethods]->xWrite(to, data, size, at);
                };
                file->pMethods = &mine;
            }
            return result;
        };
        sqlite3_vfs_register(&m_vfs, 1);
    }
    ~FullDisk() {
        sqlite3_vfs_register(usual(), 1);
        sqlite3_vfs_unregister(&m_vfs);
    }
    /// How many more writes there is room for; below zero: any number.
    static int& left() {
        static int writes = -1;
        return writes;
    }

  private:
    static sqlite3_vfs*& usual() {
        static sqlite3_vfs* made = nullptr;
        return made;
    }
    static std::map<const sqlite3_io_methods*, const sqlite3_io_methods*>& usualOf() {
        static std::map<const sqlite3_io_methods*, const sqlite3_io_methods*> made;
        return made;
    }
    sqlite3_vfs m_vfs;
};

/// A shop in a file on a disk that runs full.
class DiskFull : public testsupport::ScreenFixture {
  protected:
    DiskFull() : m_test(testsupport::EngineKind::File, testsupport::TestDatabase::Contents::Shop) {
        m_database = m_test.station();
        m_database->execute(u"INSERT INTO Customer (company) VALUES('Acme')"_s);
        m_database->execute(u"INSERT INTO Vendor (company) VALUES('Bolt')"_s);
        m_database->execute(u"INSERT INTO Operation (Description, OperType) VALUES('Mill', 'I')"_s);
    }
    ~DiskFull() override { FullDisk::left() = -1; }

    QStringList whole() {
        QStringList all;
        for (const jet::Table& table : m_database->schema().tables()) {
            jet::Recordset set = m_database->openRecordset(u"SELECT * FROM ["_s + table.name + u']',
                                                           jet::RecordsetType::Snapshot);
            for (; !set.eof(); set.moveNext()) {
                QString row = table.name;
                for (qsizetype i = 0; i < set.fieldNames().size(); ++i)
                    row += u'|' + set.field(static_cast<int>(i)).toText();
                all << row;
            }
        }
        all.sort();
        return all;
    }
    /// Lets the save fail at its first write, its second and so on, until there is room for all.
    /// Returns how many had room.
    int untilDone(const std::function<bool()>& save) {
        for (int room = 0; room < 500; ++room) {
            const QStringList before = whole();
            FullDisk::left() = room;
            const bool done = save();
            FullDisk::left() = -1;
            if (done)
                return room;
            EXPECT_EQ(whole(), before) << "with room for " << room;
            EXPECT_EQ(m_database->lookup(u"SELECT COUNT(*) FROM Customer"_s).toLong(), 1);
        }
        ADD_FAILURE() << "never done";
        return 0;
    }
    void untilStored(const std::function<void()>& save) {
        EXPECT_GT(untilDone([&] {
                      try {
                          save();
                          return true;
                      } catch (const jet::Error& error) {
                          EXPECT_EQ(error.failure(), jet::Failure::DiskFull) << error.what();
                          return false;
                      }
                  }),
                  3);
    }
    /// A document of a dozen operations.
    template <class Draft>
    static Draft routed() {
        Draft draft;
        draft.header.custId = 1;
        estimating::OperRow row;
        row.operNo = 1;
        draft.operations.assign(12, row);
        return draft;
    }

    const FullDisk m_disk;
    testsupport::TestDatabase m_test;
    std::unique_ptr<jet::Database> m_database;
};

} // namespace

TEST_F(DiskFull, LeavesWhatIsSavedDoneOrUntouched) {
    // Long enough to be written in several pieces.
    const QString notes(9000, u'n');
    qint64 estNo = 0, jobNo = 0, order = 0;
    for (const bool adding : {true, false}) {
        untilStored([&] {
            auto draft = routed<estimating::EstimateDraft>();
            draft.header.quantity = adding ? 3 : 4;
            draft.header.estNotes = notes;
            estNo = estimating::saveEstimate(*m_database, estNo, draft).key;
        });
        untilStored([&] {
            auto draft = routed<jobs::JobDraft>();
            draft.header.jobNotes = adding ? notes : notes + u'x';
            jobNo = jobs::saveJob(*m_database, jobNo, draft).key;
        });
        untilStored([&] {
            purchasing::OrderDocument document;
            document.vendor.vendorId = 1;
            document.vendor.copied[14] = adding ? notes : notes + u'x';
            document.lines.resize(12);
            const auto before =
                order == 0 ? std::nullopt : purchasing::loadOrder(*m_database, order);
            order =
                purchasing::storeOrder(*m_database, order, document, before ? &*before : nullptr)
                    .key;
        });
    }
}

TEST_F(DiskFull, IsToldAndKeepsWhatWasTyped) {
    masters::registerScreens();
    core::SharedState& state = core::shared();
    state.MainDatabase = std::move(m_database);
    state.CurrentUserName = u"Admin"_s;
    m_database = m_test.station();
    open(u"frmCustomer"_s);
    press(u"cmdEdit"_s);
    type(u"txtCustomer"_s, u"Acme & Sons"_s);
    int told = 0;
    screen::seams().msgBox = [&](const QString& said, screen::Buttons, screen::Icon, const QString&,
                                 screen::Answer) {
        EXPECT_TRUE(said.startsWith(u"The disk of the database is full."_s)) << said.toStdString();
        EXPECT_EQ(text(u"txtCustomer"_s), u"Acme & Sons");
        ++told;
        return screen::Answer::Close;
    };
    const int room = untilDone([&] {
        press(u"cmdSave"_s);
        return text(u"lblCustomerMode"_s) == u"BROWSE";
    });
    EXPECT_GT(room, 0);
    EXPECT_EQ(told, room) << "once for each time that there was no room";
    EXPECT_EQ(m_database->lookup(u"SELECT company FROM Customer"_s).toText(), u"Acme & Sons");
    state.MainDatabase.reset();
}
