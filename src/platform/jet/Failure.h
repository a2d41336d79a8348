#pragma once

#include <QString>
#include <QStringView>

// The run-time errors of the store: each function raises one number with its Chinese description.
// What stands in 『』 in a description is the name or text that the failure is about.
namespace qvnd::jet {

// A number and a description of the caller's own.
[[noreturn]] void fail(long number, const QString& description);

[[noreturn]] void failItemNotFound(QStringView name);                       // 3265
[[noreturn]] void failTableExists(QStringView table);                       // 3010
[[noreturn]] void failTableNotFound(QStringView table);                     // 3078
[[noreturn]] void failTableToDropNotFound(QStringView table);               // 3376
[[noreturn]] void failInsertTargetNotFound(QStringView table);              // 3192
[[noreturn]] void failDuplicate();                                          // 3022
[[noreturn]] void failNoCurrentRecord();                                    // 3021
[[noreturn]] void failRecordDeleted();                                      // 3167
[[noreturn]] void failNoAddNewOrEdit();                                     // 3020
[[noreturn]] void failClosed();                                             // 3420
[[noreturn]] void failSyntax(QStringView statement, const QString& reason); // 3075
[[noreturn]] void failUnknownParameter(QStringView name);                   // 3061
[[noreturn]] void failUndefinedFunction(QStringView name);                  // 3085
[[noreturn]] void failCriteriaTypeMismatch();                               // 3464
[[noreturn]] void failZeroLength(QStringView field);                        // 3315
[[noreturn]] void failTextTooLong(QStringView field);                       // 3163
[[noreturn]] void failConversion(QStringView field);                        // 3421
[[noreturn]] void failFileNotFound(QStringView path);                       // 3024
[[noreturn]] void failFolderInvalid(QStringView path);                      // 3044
[[noreturn]] void failCannotAccess(QStringView path);                       // 3051
[[noreturn]] void failReadOnly(QStringView path);                           // 3051
[[noreturn]] void failUnrecognizedFormat(QStringView path);                 // 3343
[[noreturn]] void failDatabaseExists(QStringView path);                     // 3204

[[noreturn]] void failTypeMismatch();     // 13
[[noreturn]] void failOverflow();         // 6
[[noreturn]] void failInvalidUseOfNull(); // 94

} // namespace qvnd::jet
