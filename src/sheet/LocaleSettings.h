#pragma once
// The separators and formats the spreadsheet takes from the user's locale, as
// one injectable object: the formula compiler reads its list and decimal
// separators, the evaluator its float text, number reading, currency text and
// letter case. The defaults are those of an English (United States) desktop:
// decimal ".", list ",", thousands ",", currency "$", short date M/d/yyyy.
//
// Number reading accepts optional blanks, an optional sign, digits with at most
// one decimal separator (at least one digit), and an optional exponent "E" or
// "e" with an optional sign and digits. Nothing else is a number: no thousands
// separators, no "INF" or "NAN".

#include <cstdint>
#include <string>
#include <string_view>

namespace zorfa::sheet {

class LocaleSettings {
public:
    char decimalSeparator = '.';
    char listSeparator = ',';
    char thousandSeparator = ',';
    std::string currencyString = "$";
    std::string shortDateFormat = "M/d/yyyy";
    // The two currency layouts of the runtime: 0 "$1", 1 "1$", 2 "$ 1", 3 "1 $";
    // negative 0 "($1)", 1 "-$1", 2 "$-1", 3 "$1-", 4 "(1$)", 5 "-1$".
    int currencyFormat = 0;
    int negativeCurrencyFormat = 0;

    // The general float text of the runtime: up to 15 significant digits,
    // fixed notation unless the decimal exponent is above 15 or below -4
    // ("1E15", "1.5E-5"); infinities and NaN read "INF", "-INF", "NAN".
    std::string floatText(double value) const;
    void appendFloatText(double value, std::string& out) const { appendFloatText(value, decimalSeparator, out); }
    static void appendFloatText(double value, char decimalSeparator, std::string& out);

    // A number in this locale's format; false when the text is anything else.
    bool parseNumber(std::string_view text, double& value) const;  // defined below the class
    bool isNumber(std::string_view text) const {
        double ignored;
        return parseNumber(text, ignored);
    }

    // The runtime's currency text with `decimals` digits after the separator
    // and thousands separators: 1234.5 with 2 gives "$1,234.50".
    std::string currencyText(double value, int decimals) const;

    // Letter case of the single-byte code page (Windows-1252).
    static char toUpper(char c) noexcept;
    static char toLower(char c) noexcept;
    static std::string upperCase(std::string_view text);
    static std::string lowerCase(std::string_view text);
    // Case-insensitive comparison: negative, 0 or positive.
    static int compareText(std::string_view a, std::string_view b) noexcept;
    static bool sameText(std::string_view a, std::string_view b) noexcept;
};

// A number with the given decimal separator (the rules of parseNumber).
bool parseNumberText(std::string_view text, char decimalSeparator, double& value);

// "TRUE" or "FALSE" in any case; false when the text is neither.
bool parseBooleanText(std::string_view text, bool& value) noexcept;

inline bool LocaleSettings::parseNumber(std::string_view text, double& value) const {
    return parseNumberText(text, decimalSeparator, value);
}

}  // namespace zorfa::sheet
