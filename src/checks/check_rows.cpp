// The table of all checks: one row each, by code.

#include "checks/check_table.h"

#include <array>

namespace corvane::checks {

namespace {

constexpr auto E = Severity::kError;
constexpr auto W = Severity::kWarning;
constexpr auto I = Severity::kNote;
constexpr auto kNone = FixKind::kNone;
constexpr auto kSafe = FixKind::kSafe;
constexpr auto kUnsafe = FixKind::kUnsafe;

constexpr std::array kChecks = {
    // Files and lines.
    Check{Code::kFileMissing, E, "file cannot be opened",
          "The run ends with exit status 1, after the log has been opened.",
          "order file=order.data", "the name of a file that is there and can be read", kNone},
    Check{Code::kNoLastBreak, E, "last line without a line break",
          "The last line of a file counts only if a line break ends it. Without one it is thrown "
          "away, and nothing says so.",
          "2,CM26,33.75,64,Clearwater Cartons<end of file>", "a line break at the end", kSafe},
    Check{Code::kCarriageReturns, E, "lines end with a carriage return only",
          "The whole file is one line without a line break, and is thrown away.",
          "1,LB42,44.75,60,Badger Box<CR>1,LB42,...", "line feeds", kSafe},
    Check{Code::kZeroBytes, E, "zero bytes, as in UTF-16",
          "A zero byte ends its line. In a file of two-byte characters (\"Unicode text\" of a "
          "spreadsheet) that loses everything.",
          "1\\0,\\0L\\0B\\0004\\0002\\0", "the file in UTF-8", kSafe},
    Check{Code::kNotUtf8, W, "bytes that are not UTF-8",
          "A field that is not UTF-8 is read as Latin-1. Where another file, or another line, has "
          "the same name in UTF-8, both are read alike; a name in a third encoding is not.",
          "M\\xfcller Box", "the file in UTF-8", kSafe},
    Check{Code::kByteOrderMark, I, "byte order mark",
          "It is dropped at the very start of a file and does no harm there.",
          "\\xef\\xbb\\xbf1,LB42,...", "the file without it", kSafe},
    Check{Code::kLongLine, E, "line of more than 1023 bytes", "The line is skipped.",
          "1,LB42,44.75,60,Badger Box and a page of pasted text", "a shorter line", kNone},
    Check{Code::kEmptyLine, E, "empty line",
          "In the machine file it is a cutter without names, whose deckle of width 0 becomes a "
          "commodity of the model. In the order file it is a bad order, in the freight rate file a "
          "rate without names (there it is a warning). A spreadsheet writes empty rows as lines of "
          "commas.",
          ",,,,", "the file without the line", kSafe},
    Check{Code::kOddBlank, W, "no-break space, tab or zero-width character in a field",
          "It cannot be seen, and makes a second grade or customer.", "LB42<no-break space>",
          "a blank, or nothing", kSafe},
    Check{Code::kSeparator, E, "fields are not separated by commas",
          "Only a comma separates fields, so that every line is bad.", "1;LB42;44,75;60;Badger Box",
          "commas between fields, points in numbers", kUnsafe},
    Check{
        Code::kHeader, W, "header line",
        "There are no headers: the line is read as a record. As an order it is bad, as a cutter it "
        "adds a deckle of width 0.",
        "Period,Grade,Width,Quantity,Customer", "the file without the line", kSafe},
    Check{Code::kDoubleQuote, E, "double quote in a field",
          "There is no quoting: the quote becomes part of the name, and breaks the quoting of the "
          "import file. A comma between quotes separates fields all the same.",
          "\"Badger Box\"", "the text without quotes", kSafe},
    Check{
        Code::kControlCharacter, E, "control character or line separator in a field",
        "It becomes part of a name of the import file. To a tool that takes it as the end of a "
        "line "
        "(a carriage return, U+0085, U+2028, U+2029) the rest of the name is a command of its own; "
        "an escape steers a terminal.",
        "Badger<CR>addnode Box", "the text without it", kSafe},

    // Fields.
    Check{
        Code::kCommas, E, "leading, trailing or doubled comma",
        "A run of commas counts as one and there are no empty fields, so that every later field is "
        "read one place too early.",
        "Alder Falls,AF1,LB42,124,,68.5,13.75",
        "a value in every field; commas at the end are dropped", kSafe},
    Check{Code::kTooFewFields, E, "too few fields",
          "An order is dropped. A cutter or a rate is kept with zeros for what is missing.",
          "Badger Box,Alder Falls,Rail", "all fields of the record", kNone},
    Check{Code::kTooManyFields, W, "too many fields", "What follows the last field is ignored.",
          "1,LB42,44.75,60,Badger Box,urgent", "the fields of the record only", kUnsafe},
    Check{Code::kDecimalComma, E, "decimal comma",
          "One number becomes two fields, and all that follow move right.",
          "1,LB42,44,75,60,Badger Box", "1,LB42,44.75,60,Badger Box", kSafe},
    Check{Code::kTextAfterNumber, E, "text after a number, or a thousands mark",
          "A number is read up to the first character that does not belong to it.",
          "1'060, 1 060, 30 in", "1060, 30", kUnsafe},
    Check{Code::kNoNumber, E, "no number", "The field counts as 0.", "1,LB42,wide,60,Badger Box",
          "a number", kNone},
    Check{
        Code::kNumberForm, E, "number in a form that is rarely meant",
        "Words for infinity and not-a-number, hexadecimal and exponents are taken as numbers: 0x1F "
        "is 31 inches. In a quantity only the digits in front of the letter count.",
        "0x1F, 1e3, nan", "31, 1000", kUnsafe},
    Check{Code::kQuantityDecimals, W, "quantity with decimals", "The decimals are cut off.", "60.9",
          "61", kUnsafe},
    Check{Code::kQuantityTooLarge, E, "quantity, or sum of merged orders, above 2147483647",
          "It stays at 2147483647.", "3000000000", "a smaller quantity", kNone},
    Check{Code::kOuterBlank, E, "blank at the beginning or end of a name",
          "Nothing is trimmed: with the blank it is another period, grade, customer, mill or mode.",
          "LB42<blank>", "LB42", kSafe},
    Check{Code::kNearNames, W, "names that differ by case, blanks or one letter",
          "They are two grades, customers, mills or modes.", "Badger Box and Badger box",
          "one name", kUnsafe},
    Check{
        Code::kNearWidths, W, "widths of one grade that are nearly equal",
        "Each has a row of its own in the linear programs and a store of its own, often under one "
        "name.",
        "44.75 and 44.7501", "one width; what is within 0.0005 of an eighth is rounded", kSafe},
    Check{Code::kNotEighths, W, "width that is not in eighths of an inch",
          "Names keep six digits of a width in commodities and three decimals in nodes.", "33.3333",
          "33.375", kUnsafe},
    Check{Code::kOtherQuotes, W, "name in quotes",
          "The quotes are part of the name, which then is another one.", "'Badger Box'",
          "Badger Box", kSafe},

    // The machine file.
    Check{Code::kSecondCutter, E, "second line of one location, cutter and grade",
          "It is dropped without a word, but its deckle stays a commodity of the model.",
          "two lines AF1, LB42 of Alder Falls", "one line", kUnsafe},
    Check{Code::kCutterAtTwoMills, E, "one cutter name at two mills",
          "The location is not part of the machine's name: both become one machine.",
          "AF1 at Alder Falls and at Birch Landing", "a name of its own for each", kNone},
    Check{Code::kDeckleNotPositive, E, "deckle width not above 0",
          "It is exported as it is, and no pattern fits on it.", "-124", "the width in inches",
          kNone},
    Check{Code::kCapacityNotPositive, E, "capacity not above 0", "It is exported as it is.", "0",
          "deckles per day", kNone},
    Check{Code::kPoundsNotPositive, W, "pounds per inch not above 0",
          "Freight from this cutter costs nothing.", "0", "the weight of a roll of one inch width",
          kNone},
    Check{Code::kWasteCostNotPositive, W, "waste cost not above 0", "Nothing speaks against trim.",
          "0", "the cost of an inch of trim", kNone},
    Check{Code::kGradeNotOrdered, I, "grade that nobody orders",
          "Its deckle still becomes a commodity of the model.",
          "a line of BK50 without orders of it", "the file without the line", kNone},
    Check{
        Code::kOutOfUnit, W, "width that seems to be in another unit",
        "Widths are inches. Millimetres are 25.4, centimetres 2.54 times as many, feet a twelfth.",
        "3149.6", "124", kUnsafe},
    Check{Code::kWiderThanSmallestDeckle, W, "width that does not fit on each deckle of its grade",
          "Generation begins with a pattern of this width on every deckle of the grade, fitting or "
          "not; such a pattern is wider than its deckle and shows no trim.",
          "130 inches where LB42 runs on 252 and on 124", "a check of both widths", kNone},

    // The order file.
    Check{Code::kOrderNotPositive, E, "width or quantity not above 0", "The order is dropped.",
          "1,LB42,44.75,0,Badger Box", "a number above 0", kNone},
    Check{Code::kSeveralDemands, W, "several demands for one grade, period and width",
          "Pattern generation sees only the quantity that came first in the file. The import file "
          "holds all amounts.",
          "two customers order 44.75 of LB42 in period 1", "the largest quantity first", kUnsafe},
    Check{Code::kNoCutter, E, "no cutter for this grade and width", "The order is dropped.",
          "1,LB24,44.75,60,Badger Box", "a grade of the machine file, and a width that fits",
          kUnsafe},
    Check{Code::kNoOrders, E, "no order is left",
          "The run writes an import file without patterns and ends with exit status 0.",
          "an empty order file", "orders that some cutter can make", kNone},
    Check{Code::kPeriodOrder, E, "periods not first mentioned in ascending order",
          "The time of the plan runs in the order in which the file first mentions the periods.",
          "an order of period 2 before the first one of period 1", "orders sorted by period",
          kSafe},
    Check{Code::kPeriodSpelling, W, "one period written in two ways",
          "Periods are texts: these are two periods.", "1 and 01", "one way", kUnsafe},
    Check{Code::kSameOrderTwice, W, "the same order line twice",
          "Both are merged into one order of twice the quantity, which counts as a second demand. "
          "Often a file was pasted twice.",
          "1,LB42,44.75,60,Badger Box in lines 1 and 9", "one line", kUnsafe},
    Check{Code::kPeriodWithoutGrade, I, "period without orders of a grade",
          "Generation carries the widths of an earlier period over, with no quantity.",
          "CM26 in periods 1 and 3 only", "as it is, if it is meant", kNone},
    Check{Code::kKnifeLimit, W, "knife limit below what narrow widths need",
          "A pattern of the most rolls that are allowed does not fill the deckle, so that trim "
          "cannot "
          "be avoided.",
          "maximum widths in pattern=5, rolls of 15.5 on a deckle of 128.5",
          "maximum widths in pattern=10, where the winder has the knives", kNone},
    Check{Code::kOverCapacity, W, "more inches ordered than the cutters of the grade can make",
          "Rolls will be short in this period, at 50000 each.", "40000 inches for 39928 in 7 days",
          "less, or another period", kNone},
    Check{Code::kOddQuantity, I, "quantity far above the customer's own",
          "A digit may have slipped.", "6000 among 60s", "600 or 60", kNone},
    Check{Code::kWidthsTooNear, E, "widths of one grade that differ by at most 0.00000001",
          "The run ends with a fault.", "44.75 and 44.750000001", "one width", kSafe},
    Check{Code::kSwapped, W, "width and quantity seem to be swapped",
          "The width comes first. Decimals of the quantity are cut off.",
          "1,LB42,60,44.75,Badger Box", "1,LB42,44.75,60,Badger Box", kUnsafe},
    Check{Code::kPeriodMissing, W, "period missing between others",
          "The plan goes from one period to the next as if no time lay between.",
          "periods 1, 2 and 4", "orders in every period", kNone},

    // The freight rate file.
    Check{Code::kSecondRate, E, "second rate of one customer, mill and mode",
          "The first one counts and this one is dropped (a warning where both say the same).",
          "Badger Box, Alder Falls, Rail at 18.5 and again at 19", "one line", kUnsafe},
    Check{Code::kNoWay, E, "customer whom no mill that makes the grade reaches",
          "Nothing can be delivered: every roll is short at 50000.",
          "orders of Badger Bax, rates of Badger Box",
          "the customer's name as in the rates, or a rate", kUnsafe},
    Check{Code::kMillWithoutWay, W, "customer whom a mill that makes the grade does not reach",
          "The mill is out for this customer.", "no rate from Cedar Narrows to Badger Box",
          "a rate, or as it is if it is meant", kNone},
    Check{Code::kFreeFreight, W, "rate not above 0", "Freight costs nothing.",
          "Badger Box,Alder Falls,Rail,0,1", "money per 2000 lb", kNone},
    Check{Code::kDelay, E, "delay that is negative, fractional or beyond the periods",
          "It is exported as it is; goods would arrive before they leave, or never.",
          "Badger Box,Alder Falls,Rail,18.5,-1", "whole periods, from 0", kNone},
    Check{Code::kSharedDelay, E, "one mode with different delays from different mills",
          "A delay node is named after the mode, not the mill: all mills share it.",
          "Rail with 1 from Alder Falls and 2 from Birch Landing",
          "a mode for each mill: Rail Alder", kUnsafe},
    Check{Code::kUnknownParty, W, "rate of a customer without orders or of an unknown mill",
          "It is never used. Often the other half of a misspelt name.",
          "Badger Bix,Alder Falls,...", "the name as in the orders or machines", kUnsafe},
    Check{Code::kCheaperMode, W, "a later mode is cheaper",
          "With delay=False only the first mode by name is used.", "Rail 30, Truck 20",
          "the cheaper mode only", kNone},
    Check{Code::kLateFirstPeriod, W, "order of the first period reached only with a delay",
          "Nothing can arrive in time.", "rail with a delay of 1 as the only mode",
          "a mode without a delay", kNone},

    // Names of the import file.
    Check{Code::kSameNode, E, "two nodes of one name",
          "Fields are joined with an underscore, and what is apart melts into one.",
          "grade A_B at cutter C, grade A at cutter B_C", "names without underscores", kNone},
    Check{Code::kSameWidthName, E, "two widths of one name",
          "The names of commodities keep six digits, those of nodes three decimals.",
          "33.33331 and 33.33334", "widths in eighths", kUnsafe},
    Check{Code::kFixedName, E, "name that meets a fixed name of the model",
          "M_{cutter}, {grade}_Waste, Waste and Machine_Time are names of the model's own.",
          "grade M at cutter AF1; customer Waste", "another name", kNone},

    // The parameter file.
    Check{Code::kUnknownKey, E, "unknown key", "The line is ignored; the setting keeps its value.",
          "batch =True", "batch=True", kSafe},
    Check{Code::kNotAWord, E, "word that is none of those allowed",
          "Words are True and False, Dual and Barrier, just so. Anything else changes nothing.",
          "batch=true", "batch=True", kSafe},
    Check{Code::kNotANumber, E, "value that is not a whole number, or no number",
          "It counts as 0: the setting becomes 0 or its lowest value, or stays as it was.",
          "occur min=2.0", "occur min=2", kSafe},
    Check{Code::kOutOfRange, W, "value beyond its range",
          "It is moved to the nearest bound, or changes nothing.",
          "new patterns per iteration=200000", "new patterns per iteration=100000", kSafe},
    Check{Code::kKeyTwice, W, "key given twice", "The last valid value counts.",
          "batch=True and later batch=False", "one line", kNone},
    Check{Code::kNoSeed, W, "no seed", "The clock gives one: the run cannot be repeated.",
          "no line rand num gen seed", "rand num gen seed=2024", kNone},
    Check{Code::kSecondEquals, E, "second = in a line", "What follows it is lost.",
          "output=a=b.imp", "a value without =", kNone},
    Check{Code::kNoFolder, E, "log or import file cannot be written",
          "Its folder is missing or not writable: the run ends with exit status 1.",
          "log file=logs/week14.log without a folder logs", "a folder that is there", kNone},
    Check{Code::kNoTime, W, "time limit of 0",
          "Generation is switched off; only patterns of a single roll remain.", "time limit=0",
          "time limit=-1", kUnsafe},
    Check{Code::kNoEffect, I, "setting without effect",
          "Nothing depends on threshold, and solver=Dual is the default and a primal simplex.",
          "threshold=4", "the file without the line", kNone},
    Check{Code::kIndented, W, "blank before a key or a comment",
          "Nothing is trimmed: it is an unknown key. A comment begins in the first column.",
          " # note", "# note", kSafe},
    Check{Code::kLogForm, E, "value in the form in which the log shows it",
          "The log writes None and 25%; the parameter file takes numbers, and these count as 0: "
          "time limit=None switches generation off.",
          "time limit=None, width pick set size=25%", "time limit=-1, width pick set size=25",
          kSafe},
    Check{Code::kPathsMeet, E, "two files are one",
          "The log or the import file is one of the input files, or each other, and cannot be "
          "opened; "
          "or two input files are the same.",
          "output=data/orders.data", "a path of its own for each file", kNone},
    Check{Code::kValueBlank, E, "blank at the beginning or end of a path",
          "Nothing is trimmed: it is another file.", "order file= data/orders.data",
          "order file=data/orders.data", kSafe},
    Check{Code::kNoValue, E, "line without = or without a value",
          "It is skipped without a word; the setting keeps its value.", "batch", "batch=True",
          kNone},

    // Import files.
    Check{Code::kImportCut, E, "import file is not whole",
          "The last line is not the trailer: the run or the copy broke off.",
          "a file without # End of Corvane. import file.", "the file of a run that ended", kNone},
    Check{Code::kImportSeveralRuns, E, "more than one run in an import file",
          "A model is declared twice.", "two files joined", "the file of one run", kNone},
    Check{Code::kImportGrammar, E, "line that is no command",
          "The network-planning tool cannot load it.", "addnode <type", "a command", kNone},
    Check{Code::kImportControlCharacter, E, "control character in an import file",
          "A tool may take it as the end of a line.", "a name with U+2028", "a name without it",
          kNone},
    Check{Code::kImportUndeclared, E, "name that is not declared",
          "A command uses a node, commodity, period or set that no line declares before.",
          "an arc from \"LB42_AF1_125\"", "a declared name", kNone},
    Check{Code::kImportArcEnd, E, "arc whose end does not carry its commodity",
          "Nothing can flow on it.", "an arc of Waste from a machine", "a node with the commodity",
          kNone},
    Check{Code::kImportDemand, E, "demand differs from the orders",
          "The file was made from other orders.", "60 in the file, 80 in the orders", "a new run",
          kNone},
    Check{
        Code::kImportSense, E, "command that makes no sense",
        "It has the form of a command, but stands out of its order, contradicts an earlier one, or "
        "has a number that means nothing.",
        "a node that is a Machine in one line and a Process in another", "a new run", kNone},
};

constexpr bool ascending() {
  for (std::size_t i = 1; i < kChecks.size(); ++i) {
    if (kChecks[i - 1].code >= kChecks[i].code) {
      return false;
    }
  }
  return true;
}
static_assert(ascending());

}  // namespace

std::span<const Check> allChecks() {
  return kChecks;
}

}  // namespace corvane::checks
