CREATE TABLE SentInvoice (
    ID COUNTER PRIMARY KEY,
    InvoiceNo TEXT(255),
    Description TEXT(255),
    Quantity DOUBLE,
    SentDate TEXT(255),
    POID TEXT(40)
);

CREATE TABLE SentAP (
    ID COUNTER PRIMARY KEY,
    Description TEXT(255),
    Quantity DOUBLE,
    SentDate TEXT(255),
    POID LONG
);

CREATE INDEX SentInvoice_POID ON SentInvoice (POID);
CREATE INDEX SentInvoice_InvoiceNo ON SentInvoice (InvoiceNo);
CREATE INDEX SentAP_POID ON SentAP (POID);
