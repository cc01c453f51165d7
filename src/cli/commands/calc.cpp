// zorfa-cli calc: enters a comma-separated file into a sheet as typed text,
// recalculates, and writes what every cell shows in the same shape.
#include <cerrno>
#include <fstream>
#include <iostream>
#include <ostream>

#include "base/Errors.h"
#include "base/FileErrors.h"
#include "cli/Args.h"
#include "cli/Command.h"
#include "sheet/FormulaBook.h"

namespace zorfa::cli {

namespace {

using Row = std::vector<std::string>;

// RFC 4180: fields split at ",", rows at CR LF or LF; a quoted field may hold
// commas, line breaks and doubled quotes. A break at the very end adds no row.
std::vector<Row> readCsv(const std::string& text, bool& crlf) {
    std::vector<Row> rows;
    Row row;
    std::string field;
    bool quoted = false, fieldStarted = false;
    crlf = false;
    auto endField = [&] {
        row.push_back(std::move(field));
        field.clear();
        fieldStarted = false;
    };
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quoted) {
            if (c == '"') {
                if (i + 1 < text.size() && text[i + 1] == '"') {
                    field += '"';
                    ++i;
                } else {
                    quoted = false;
                }
            } else {
                field += c;
            }
        } else if (c == '"' && !fieldStarted) {
            quoted = fieldStarted = true;
        } else if (c == ',') {
            endField();
        } else if (c == '\n' || c == '\r') {
            if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') {
                crlf = true;
                ++i;
            }
            endField();
            rows.push_back(std::move(row));
            row.clear();
        } else {
            field += c;
            fieldStarted = true;
        }
    }
    if (quoted) throw Exception("unterminated quoted field in the CSV input");
    if (fieldStarted || !row.empty() || !field.empty()) {
        endField();
        rows.push_back(std::move(row));
    }
    return rows;
}

void writeField(std::ostream& out, const std::string& field) {
    if (field.find_first_of(",\"\r\n") == std::string::npos) {
        out << field;
        return;
    }
    out << '"';
    for (char c : field) {
        if (c == '"') out << '"';
        out << c;
    }
    out << '"';
}

int runCalc(const std::vector<std::string>& argv, std::ostream& out, std::ostream& err) {
    Args args(argv, {}, {"--out"});
    args.expectPositionals(1, 1);
    const std::string& inPath = args.positional()[0];
    bool crlf = false;
    const std::vector<Row> rows = readCsv(readWholeFile(inPath), crlf);

    sheet::FormulaBook book(1);
    book.formulas().setMessageHandler([&err](const std::string& message) { err << message << "\n"; });
    // Automatic calculation is off while the cells are entered, as when a
    // file is read; its end recalculates the book.
    book.formulas().beginUpdate();
    for (size_t r = 0; r < rows.size(); ++r)
        for (size_t c = 0; c < rows[r].size(); ++c)
            if (!rows[r][c].empty())
                book.enter(0, static_cast<std::int32_t>(c), static_cast<std::int32_t>(r), rows[r][c]);
    book.formulas().endUpdate();

    std::ofstream file;
    if (auto outPath = args.value("--out")) {
        file.open(*outPath, std::ios::binary);
        if (!file) throwFileError("Cannot create file", *outPath, errno);
    }
    std::ostream& target = file.is_open() ? static_cast<std::ostream&>(file) : out;
    for (size_t r = 0; r < rows.size(); ++r) {
        for (size_t c = 0; c < rows[r].size(); ++c) {
            if (c > 0) target << ',';
            writeField(target, book.valueText(0, static_cast<std::int32_t>(c), static_cast<std::int32_t>(r)));
        }
        target << (crlf ? "\r\n" : "\n");
    }
    return kExitOk;
}

}  // namespace

extern const Command kCommand_calc{
    "calc", "enter a CSV file into a sheet, recalculate, and write the values",
    "usage: zorfa-cli calc IN.csv [--out OUT.csv]\n"
    "\n"
    "Enters every field of IN.csv (RFC 4180: \",\" between fields, quoted fields\n"
    "with \"\" for a quote) into sheet one as typed text, the first field of the\n"
    "first row into A1: a field that starts with \"=\" and holds no \"#\" is a\n"
    "formula. Then recalculates and writes what every cell shows, in the same\n"
    "shape (rows, fields per row, line breaks), to OUT.csv or to stdout.\n"
    "Formula messages, such as a cycle, go to stderr.\n"
    "\n"
    "  --out OUT.csv   write the values to OUT.csv instead of stdout\n",
    runCalc};

}  // namespace zorfa::cli
