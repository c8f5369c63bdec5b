#pragma once

#include "platform/screen/Complaint.h"

#include <QDate>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace reporting {

/// A criterion of a query: which controls stand for it, and what it adds to the statement of the
/// grid and to the selection formula of the reports. Both are clauses that begin with " and ", with
/// %1 and %2 for the values.
struct Criterion {
    enum class Kind {
        Text,   ///< compared as typed, so that an apostrophe ends in the database's error
        Number, ///< an unsigned number
        Date,
        Named,  ///< one value is a row of the list and stands for its number; a range goes by names
        Choice, ///< one of a few words, each with its code
    };

    QString caption; ///< of the use box
    Kind kind = Kind::Text;
    QString useBox;
    QString rangeBox = {}; ///< none: one value only
    QString first;
    QString second = {};
    /// Rows to choose from: their first column is the text, their last one the key.
    QString list = {};
    QString one = {}, range = {};                          ///< clauses of the statement
    QString oneFormula = {}, rangeFormula = {};            ///< clauses of the formula
    std::vector<std::pair<QString, QString>> choices = {}; ///< word and code
};

/// What the user has given for a criterion.
struct Given {
    bool used = false;
    bool range = false;
    QString first, second; ///< trimmed
    QString key = {};      ///< of the first value's row; empty if it is on none
    std::optional<QDate> firstDay = {}, secondDay = {};
    bool firstValid = true, secondValid = true; ///< no impossible date
};

/// A column of the results.
struct ResultColumn {
    enum class Kind { Text, Number, Date, YesNo, Reference /* a number; 0 shows as nothing */ };
    QString title;
    QString field;
    int characters = 12;
    Kind kind = Kind::Text;
};

/// A query with its results: all that tells one member of the family from another.
struct QueryDescriptor {
    QString queryForm, queryCaption;
    QString statement; ///< up to the where clause
    std::vector<Criterion> criteria;
    bool testsEmptyAnswer = false; ///< in the query form, so that the criteria can be changed

    QString resultsForm, resultsCaption;
    QString gridName;
    std::vector<ResultColumn> columns;
    QString reportModule;                      ///< Reports.Module
    QString reportKey;                         ///< "Job.JobNo"
    QString keyField;                          ///< of the rows
    bool textKey = false;                      ///< closed with an apostrophe in the formula
    QString module = {};                       ///< screen to go to
    QString moduleKey = {};                    ///< field of the rows by which it is found there
    QString belowKey = {};                     ///< then the text key of the row below, "VOrderKey"
    QString lockedTitle = {}, lockedText = {}; ///< none: nothing is said
};

/// The ten queries of the program.
const std::vector<QueryDescriptor>& queries();

/// What is asked: always the same criteria in the same order in both texts.
struct QueryTexts {
    QString statement;
    QString formula;
};

/// First thing that is wrong with a criterion in use, told with its name; nothing if all can be
/// asked. `given` has an entry for each criterion.
std::optional<screen::Complaint> checkCriteria(const QueryDescriptor& query,
                                               const std::vector<Given>& given);
/// Nothing where no criterion is in use. Only for what passed the check.
std::optional<QueryTexts> queryTexts(const QueryDescriptor& query, const std::vector<Given>& given);

/// The formula that selects the rows of those keys.
QString selectionOf(const QueryDescriptor& query, const QStringList& keys);

} // namespace reporting
