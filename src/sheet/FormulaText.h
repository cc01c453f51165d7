#pragma once
// Postfix tokens back to formula text, in A1 or R1C1 form with the locale's
// separators: "=" followed by the expression, operators joined without
// blanks, strings quoted with inner quotes doubled, sheet captions that hold a
// blank quoted with "'". Relative parts are taken from the formula's own cell
// (from row 0, column 0 on a sheet-qualified reference).
//
// Raises ECalculationError "Missing tokens" when an operator or function
// lacks operands, and "Error constructing formula. Parsed expression error
// offset at" when the tokens do not leave exactly one expression.

#include <cstdint>
#include <string>
#include <string_view>

#include "sheet/FormulaScope.h"
#include "sheet/Tokens.h"

namespace zorfa::sheet {

std::string formulaText(std::string_view tokens, const FormulaScope& scope, std::int32_t column, std::int32_t row);

// One reference token's text without "=": "A1", "$B$2:C3", "Sheet2!R[1]C".
std::string referenceText(const token::Reference& ref, const FormulaScope& scope, std::int32_t column,
                          std::int32_t row);

}  // namespace zorfa::sheet
