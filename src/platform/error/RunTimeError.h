#pragma once

#include <exception>
#include <string>

namespace qvnd {

// A run-time error as the rules know it: a number that handlers compare against and a Chinese
// description that is shown when no handler knows the number.
class RunTimeError : public std::exception {
public:
    RunTimeError(long number, std::u16string description);

    long number() const { return number_; }
    const std::u16string& description() const { return description_; }

    // The description in UTF-8, for logs and test output.
    const char* what() const noexcept override { return utf8_.c_str(); }

private:
    long number_;
    std::u16string description_;
    std::string utf8_;
};

// Numbers that handlers compare against.
namespace error {
inline constexpr long stopped = 0; // by the user, who needs no word about it
inline constexpr long invalidCall = 5;
inline constexpr long overflow = 6;
inline constexpr long typeMismatch = 13;
inline constexpr long subscriptOutOfRange = 9;
inline constexpr long fileNotFound = 53;
inline constexpr long fileAlreadyExists = 58;
inline constexpr long diskFull = 61;
inline constexpr long permissionDenied = 70;
inline constexpr long pathAccess = 75;
inline constexpr long pathNotFound = 76;
inline constexpr long objectNotSet = 91;
inline constexpr long patternInvalid = 93;
inline constexpr long invalidUseOfNull = 94;
inline constexpr long automationServerGone = 462;
inline constexpr long noAddNewOrEdit = 3020;
inline constexpr long noCurrentRecord = 3021;
inline constexpr long duplicateValue = 3022;
inline constexpr long tableExists = 3010;
inline constexpr long cannotOpenFile = 3024;
inline constexpr long storeFailed = 3000;
inline constexpr long storeDiskFull = 3026;
inline constexpr long noTransaction = 3034;
inline constexpr long folderInvalid = 3044;
inline constexpr long cannotAccessFile = 3051;
inline constexpr long unknownParameter = 3061;
inline constexpr long cannotExecuteQuery = 3065;
inline constexpr long syntaxError = 3075;
inline constexpr long tableNotFound = 3078;
inline constexpr long undefinedFunction = 3085;
inline constexpr long nameInvalid = 3125;
inline constexpr long unknownInsertField = 3127;
inline constexpr long textTooLong = 3163;
inline constexpr long fieldNotUpdatable = 3164;
inline constexpr long recordDeleted = 3167;
inline constexpr long fieldDefinedTwice = 3191;
inline constexpr long insertTargetNotFound = 3192;
inline constexpr long databaseExists = 3204;
inline constexpr long storeBusy = 3260;
inline constexpr long noFieldDefined = 3264;
inline constexpr long itemNotFound = 3265;
inline constexpr long zeroLengthNotAllowed = 3315;
inline constexpr long unrecognizedFormat = 3343;
inline constexpr long tableToDropNotFound = 3376;
inline constexpr long fieldDefinitionInvalid = 3409;
inline constexpr long objectClosed = 3420;
inline constexpr long conversionFailed = 3421;
inline constexpr long criteriaTypeMismatch = 3464;
inline constexpr long memberNotFound = 5941;
inline constexpr long documentNotShown = 31024; // of the document view
inline constexpr long dialogCancelled = 32755;
inline constexpr long elementNotFound = 35601;
inline constexpr long keyNotUnique = 35602;
inline constexpr long keyInvalid = 35603;
inline constexpr long remoteCallFailed = static_cast<long>(0x800706BEUL);
} // namespace error

} // namespace qvnd
