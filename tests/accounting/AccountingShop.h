#pragma once

#include "accounting/Screens.h"
#include "core/MirsaMain.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "qbcompany/Company.h"
#include "support/Paths.h"
#include "support/ShopFixture.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

/// The practice company's program.
inline QString practiceCompany() {
    return testsupport::builtFile(u"tools/qbcompany/mirsa-qb-company"_s);
}

/// A small shop beside a practice company, whose program is the door to QuickBooks.
class AccountingShop : public testsupport::ShopTest {
  protected:
    void prepare() override {
        accounting::registerScreens();
        values::setNow(QDateTime(QDate(2026, 3, 9), QTime(8, 0), Qt::UTC));
        core::shared().ProgramFolder = m_folder.path();
        ask({u"make"_s});
        usualDoor();
    }

    QString inFolder(const QString& name) const { return m_folder.filePath(name); }
    void write(const QString& name, const QString& text) const {
        QFile file(inFolder(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
    }
    void doorIs(const QString& command) const { write(u"Mirsa.quickbooks"_s, command + u'\n'); }
    /// Runs the practice company's program with these words behind its file.
    void ask(const QStringList& words) const {
        ASSERT_EQ(QProcess::execute(practiceCompany(),
                                    QStringList(inFolder(u"Practice.company"_s)) + words),
                  0);
    }
    /// The door to the practice company, which waits that long for an answer.
    void usualDoor(int seconds = 300) const {
        doorIs(u"\"%1\" Practice.company\nseconds=%2"_s.arg(practiceCompany()).arg(seconds));
    }
    /// What the next message meets.
    void trouble(const QString& words) const { ask(QStringList(u"next"_s) + words.split(u' ')); }
    qbcompany::Company company() const {
        return qbcompany::Company::load(inFolder(u"Practice.company"_s));
    }
    /// The texts of an element of each record of a list.
    QStringList inCompany(const QString& tag, const QString& element = u"Name"_s) const {
        QStringList texts;
        const auto held = company();
        for (const QDomElement& record : held.list(tag))
            texts += record.firstChildElement(element).text();
        return texts;
    }

    /// A list of QuickBooks has nothing in it.
    void expectEmptyList() {
        expectBox(u"A query request did not find a matching object in QuickBooks"_s,
                  screen::Answer::Ok, u"Warning from QuickBooks"_s);
    }

    qint64 insert(const QString& table, const QString& columns, const QString& values) {
        database().execute(u"INSERT INTO "_s + table + u" ("_s + columns + u") VALUES("_s + values +
                           u")"_s);
        return database().lastCounter();
    }
    /// Turns over the tick of a row.
    void tick(const QString& grid, int row) {
        clickCell(grid, row, 1);
        key(Qt::Key_Left);
        key(Qt::Key_Space);
    }

    QTemporaryDir m_folder;
};
