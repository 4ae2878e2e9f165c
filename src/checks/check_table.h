#pragma once

#include <span>
#include <string>
#include <string_view>

namespace corvane::checks {

// An error makes the run use something else than what the line says, or keeps it from running; a
// warning is allowed and rarely meant; a note is good to know.
enum class Severity { kNote, kWarning, kError };

// The number behind "CV" in a code. The hundreds are the family.
enum class Code : int {
  kFileMissing = 101,
  kNoLastBreak = 102,
  kCarriageReturns = 103,
  kZeroBytes = 104,
  kNotUtf8 = 105,
  kByteOrderMark = 106,
  kLongLine = 107,
  kEmptyLine = 108,
  kOddBlank = 109,
  kSeparator = 110,
  kHeader = 111,
  kDoubleQuote = 112,
  kControlCharacter = 113,

  kCommas = 201,
  kTooFewFields = 202,
  kTooManyFields = 203,
  kDecimalComma = 204,
  kTextAfterNumber = 205,
  kNoNumber = 206,
  kNumberForm = 207,
  kQuantityDecimals = 208,
  kQuantityTooLarge = 209,
  kOuterBlank = 210,
  kNearNames = 211,
  kNearWidths = 212,
  kNotEighths = 213,
  kOtherQuotes = 214,

  kSecondCutter = 301,
  kCutterAtTwoMills = 302,
  kDeckleNotPositive = 303,
  kCapacityNotPositive = 304,
  kPoundsNotPositive = 305,
  kWasteCostNotPositive = 306,
  kGradeNotOrdered = 307,
  kOutOfUnit = 308,
  kWiderThanSmallestDeckle = 309,

  kOrderNotPositive = 401,
  kSeveralDemands = 402,
  kNoCutter = 403,
  kNoOrders = 404,
  kPeriodOrder = 405,
  kPeriodSpelling = 406,
  kSameOrderTwice = 407,
  kPeriodWithoutGrade = 408,
  kKnifeLimit = 409,
  kOverCapacity = 410,
  kOddQuantity = 411,
  kWidthsTooNear = 412,
  kSwapped = 413,
  kPeriodMissing = 414,

  kSecondRate = 501,
  kNoWay = 502,
  kMillWithoutWay = 503,
  kFreeFreight = 504,
  kDelay = 505,
  kSharedDelay = 506,
  kUnknownParty = 507,
  kCheaperMode = 508,
  kLateFirstPeriod = 509,

  kSameNode = 601,
  kSameWidthName = 602,
  kFixedName = 603,

  kUnknownKey = 701,
  kNotAWord = 702,
  kNotANumber = 703,
  kOutOfRange = 704,
  kKeyTwice = 705,
  kNoSeed = 706,
  kSecondEquals = 707,
  kNoFolder = 708,
  kNoTime = 709,
  kNoEffect = 710,
  kIndented = 711,
  kLogForm = 712,
  kPathsMeet = 713,
  kValueBlank = 714,
  kNoValue = 715,

  kImportCut = 801,
  kImportSeveralRuns = 802,
  kImportGrammar = 803,
  kImportControlCharacter = 804,
  kImportUndeclared = 805,
  kImportArcEnd = 806,
  kImportDemand = 807,
  kImportSense = 808,
};

// What --fix does about a finding.
enum class FixKind {
  kNone,
  kSafe,    // what the line plainly means
  kUnsafe,  // a guess
};

struct Check {
  Code code;
  Severity severity;
  std::string_view title;  // of a message, in lower case
  std::string_view why;
  std::string_view example;
  std::string_view fix;  // what to write instead
  FixKind fixKind;
};

// Every check once, by ascending code. --list, --explain, the rules of the SARIF output and
// docs/checks.md come from here.
std::span<const Check> allChecks();

// REQUIRES a code of the table.
const Check &checkOf(Code code);

// The check of "CV204", in any case; null when there is none.
const Check *findCheck(std::string_view code);

// "CV204"
std::string codeText(Code code);

std::string_view severityWord(Severity severity);  // "error", "warning", "note"

// What --explain prints.
std::string explanation(const Check &check);

// What --list prints: a line for each check.
std::string checkList();

// docs/checks.md.
std::string checkDocument();

}  // namespace corvane::checks
