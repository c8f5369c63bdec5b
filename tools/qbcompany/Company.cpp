#include "qbcompany/Company.h"

#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "qbcompany/Answers.h"
#include "qbcompany/Elements.h"

#include <QFile>
#include <QSaveFile>

namespace qbcompany {

namespace {

const QString rootTag = u"PracticeCompany"_s;

} // namespace

QDomDocument readMessage(const QString& message) {
    const auto fault = [](const QString& text) {
        return Refusal{u"QuickBooks found an error when parsing the provided XML text stream: "_s +
                       text};
    };
    for (const QChar c : message) {
        if (c.unicode() > 126)
            throw fault(u"a letter beyond ASCII stands there as it is."_s);
    }
    static const QString documentType =
        u"<!DOCTYPE QBXML PUBLIC '-//INTUIT//DTD QBXML QBD 1.0//EN' >"_s;
    QString text = message;
    if (!text.startsWith(u"<?xml version=\"1.0\"") || !text.contains(documentType))
        throw fault(u"it doesn't begin as a message of version 1.0 does."_s);
    text.remove(documentType); // names no file, which not every parser takes
    QDomDocument document;
    QString reason;
    if (!document.setContent(text, false, &reason))
        throw fault(reason);
    const QDomElement messages = document.documentElement().firstChildElement(u"QBXMLMsgsRq"_s);
    const QString onError = messages.attribute(u"onError"_s);
    if (document.documentElement().tagName() != u"QBXML" ||
        (onError != u"stopOnError" && onError != u"continueOnError"))
        throw fault(u"it isn't one QBXML with QBXMLMsgsRq and its onError."_s);
    for (QDomElement one = messages.firstChildElement(); !one.isNull();
         one = one.nextSiblingElement()) {
        const QString wrong = one.tagName().endsWith(u"Rq") ? faultOf(one) : u"it is no request"_s;
        if (!wrong.isEmpty())
            throw fault(u"in %1, %2."_s.arg(one.tagName(), wrong));
    }
    return document;
}

Company::Company() {
    m_document.appendChild(m_document.createElement(rootTag));
    root().setAttribute(u"lastId"_s, 0);
    root().setAttribute(u"lastInvoice"_s, 1000);
}

Company Company::load(const QString& path) {
    Company company;
    QFile file(path);
    QDomDocument document;
    if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file) ||
        document.documentElement().tagName() != rootTag)
        throw Refusal{u"The file %1 is no practice company."_s.arg(path)};
    company.m_document = document;
    return company;
}

bool Company::save(const QString& path) const {
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(m_document.toByteArray(1)) > 0 &&
           file.commit();
}

QString Company::nextId() {
    const int number = root().attribute(u"lastId"_s).toInt() + 1;
    root().setAttribute(u"lastId"_s, number);
    return u"%1-%2"_s.arg(0x80000000U + uint(number), 8, 16, QChar(u'0'))
        .arg(values::now().toSecsSinceEpoch())
        .toUpper();
}

void Company::setTrouble(const QString& trouble, const QString& request) {
    root().setAttribute(u"next"_s, trouble);
    root().setAttribute(u"nextFor"_s, request);
}

QString Company::takeTrouble(const QString& message) {
    QString trouble = root().attribute(u"next"_s);
    if (trouble.isEmpty() || !message.contains(u'<' + root().attribute(u"nextFor"_s)))
        return {};
    root().removeAttribute(u"next"_s);
    root().removeAttribute(u"nextFor"_s);
    return trouble;
}

std::vector<QDomElement> Company::list(const QString& tag) const {
    std::vector<QDomElement> found;
    for (QDomElement entry = root().firstChildElement(tag); !entry.isNull();
         entry = entry.nextSiblingElement(tag))
        found.push_back(entry);
    return found;
}

void Company::setLastInvoice(int number) {
    if (number > root().attribute(u"lastInvoice"_s).toInt())
        root().setAttribute(u"lastInvoice"_s, number);
}

void Company::addItem(const QString& kind, const QString& name, const QString& price) {
    Answers(*this).addItem(kind, name, price);
}

QString Company::answer(const QString& message, const QString& trouble) {
    const QDomDocument request = readMessage(message);
    const QDomElement messages = request.documentElement().firstChildElement(u"QBXMLMsgsRq"_s);
    m_pretended = trouble;
    return Answers(*this).toAll(messages, messages.attribute(u"onError"_s) == u"stopOnError");
}

} // namespace qbcompany
