#pragma once

#include "platform/report/Document.h"

class QWidget;

namespace report {

/// What the document is called as a PDF, fit for a file's name; `otherwise` where its report names
/// it not.
QString pdfName(const Document& document, const QString& otherwise);

/// Hands the document as a PDF to the desktop's mail program: a new message to Document::mailTo
/// (which may be empty) with the document's name as subject and the file attached. The user sends
/// it. False after a message if that can't be done.
bool sendByMail(const Document& document, QWidget* parent);

} // namespace report
