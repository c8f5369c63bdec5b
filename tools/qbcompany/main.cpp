#include "platform/values/Literals.h"
#include "qbcompany/Company.h"

#include <QCoreApplication>
#include <QFile>
#include <QLockFile>
#include <QTextStream>
#include <QThread>

#include <cstdlib>

namespace {

constexpr char usage[] = R"(mirsa-qb-company: a company to practise on in place of QuickBooks.

  mirsa-qb-company FILE          takes a message on standard input, answers on standard output
  mirsa-qb-company FILE make     makes a company with a few items and no names
  mirsa-qb-company FILE list     what the company holds
  mirsa-qb-company FILE next TROUBLE [REQUEST]
                                 what the next message meets (the next REQUEST, as "InvoiceAddRq"):
                                   closed     QuickBooks isn't running
                                   3180       the list was changed by another user
                                   warning    it is done, with a warning
                                   rubbish    it is done, and the answer can't be read
                                   death      it is done, and the program dies before the answer
                                   late N     it is done, and the answer comes N seconds later
                                   none       nothing after all

Exit codes: 0 answered, 1 QuickBooks isn't running, 2 the message was refused, 3 broken off.
)";

enum ExitCode { Answered = 0, NotRunning = 1, Refused = 2, BrokenOff = 3 };

void makeCompany(const QString& path) {
    if (QFile::exists(path))
        throw qbcompany::Refusal{path + u" is there already. Nothing was changed."_s};
    qbcompany::Company company;
    company.addItem(u"Service"_s, u"Machining"_s, u"0.00"_s);
    company.addItem(u"Service"_s, u"Tooling"_s, u"0.00"_s);
    company.addItem(u"NonInventory"_s, u"Parts"_s, u"0.00"_s);
    company.addItem(u"NonInventory"_s, u"Material"_s, u"0.00"_s);
    company.addItem(u"OtherCharge"_s, u"Freight"_s, u"0.00"_s);
    company.addItem(u"OtherCharge"_s, u"Surcharge"_s, u"5.0%"_s);
    company.addItem(u"Discount"_s, u"Early payment"_s, u"2.0"_s);
    if (!company.save(path))
        throw qbcompany::Refusal{path + u" can't be written."_s};
}

void listCompany(const QString& path, QTextStream& out) {
    const auto company = qbcompany::Company::load(path);
    for (const QString& tag :
         {u"CustomerRet"_s, u"VendorRet"_s, u"EmployeeRet"_s, u"StandardTermsRet"_s,
          u"ItemServiceRet"_s, u"ItemNonInventoryRet"_s, u"ItemOtherChargeRet"_s}) {
        for (const QDomElement& entry : company.list(tag))
            out << tag.chopped(3) << '\t' << entry.firstChildElement(u"Name"_s).text() << '\n';
    }
    for (const QString& tag : {u"InvoiceRet"_s, u"BillRet"_s}) {
        for (const QDomElement& entry : company.list(tag))
            out << tag.chopped(3) << '\t' << entry.firstChildElement(u"RefNumber"_s).text() << '\t'
                << entry.firstChildElement(u"TxnDate"_s).text() << '\t'
                << entry.firstChildElement(tag == u"InvoiceRet" ? u"CustomerRef"_s : u"VendorRef"_s)
                       .firstChildElement(u"FullName"_s)
                       .text()
                << '\n';
    }
}

int serve(const QString& path, QTextStream& out, QTextStream& err) {
    QFile in;
    if (!in.open(stdin, QIODevice::ReadOnly))
        return Refused;
    const QString message = QString::fromUtf8(in.readAll());
    auto company = qbcompany::Company::load(path);
    const QString trouble = company.takeTrouble(message);
    if (trouble == u"closed") {
        company.save(path);
        return NotRunning;
    }
    const QString answer = company.answer(message, trouble);
    if (!company.save(path)) {
        err << path << " can't be written.\n";
        return NotRunning;
    }
    if (trouble == u"death")
        return BrokenOff;
    if (trouble.startsWith(u"late "))
        QThread::sleep(trouble.section(u' ', 1).toULong());
    out << (trouble == u"rubbish" ? answer.left(answer.size() / 2) : answer);
    return Answered;
}

} // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    QTextStream out(stdout), err(stderr);
    const QStringList words = QCoreApplication::arguments().mid(1);
    if (words.isEmpty() || words[0] == u"--help" || words[0] == u"help") {
        (words.isEmpty() ? err : out) << usage;
        return words.isEmpty() ? Refused : Answered;
    }
    const QString& path = words[0];
    const QString command = words.value(1);
    constexpr int patience = 10000;
    QLockFile lock(path + u".lock"_s);
    if (!lock.tryLock(patience))
        return NotRunning;
    try {
        if (command.isEmpty()) {
            return serve(path, out, err);
        } else if (command == u"make") {
            makeCompany(path);
        } else if (command == u"list") {
            listCompany(path, out);
        } else if (command == u"next" && words.size() > 2) {
            QStringList rest = words.mid(2);
            QString trouble = rest.takeFirst();
            if (trouble == u"late" && !rest.isEmpty())
                trouble += u' ' + rest.takeFirst();
            auto company = qbcompany::Company::load(path);
            company.setTrouble(trouble == u"none" ? QString() : trouble, rest.value(0));
            company.save(path);
        } else {
            err << usage;
            return Refused;
        }
    } catch (const qbcompany::Refusal& refusal) {
        err << refusal.text << '\n';
        return Refused;
    }
    return Answered;
}
