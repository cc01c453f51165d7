#pragma once
// TcxSSFormulasCache: the book's formula engine. It compiles typed text into
// FormulaRecords for the cell storage (the FormulaCompiler seam), keeps the
// list of every live record, the defined names and the settings formulas
// read (locale, reference style, clock, random generator), and drives
// calculation: CalcFormula for one record, Recalc for the book, two passes
// over the list (forward, then backward), with cycle detection.
//
// Messages go through one point: in Silent mode (file reading) a message
// only sets ParseFailed; otherwise it goes to the message handler (the GUI's
// message box, the command line's stderr). A text that does not compile
// stays plain text, except that in interactive use an unknown word or
// function keeps a formula whose value is "#NAME!".

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "sheet/CellFormulaLink.h"
#include "sheet/Evaluator.h"
#include "sheet/FormulaEnvironment.h"
#include "sheet/FormulaParser.h"
#include "sheet/FormulaRecord.h"
#include "sheet/FormulaScope.h"
#include "sheet/FunctionTable.h"
#include "sheet/LocaleSettings.h"

namespace zorfa::sheet {

class TcxSSFormulasCache final : public FormulaCompiler {
public:
    static constexpr const char* kCycleMessage = "Calculation error. Formula cycled indexes present";

    explicit TcxSSFormulasCache(const FormulaSheets* sheets = nullptr, LocaleSettings locale = {});
    ~TcxSSFormulasCache() override;
    TcxSSFormulasCache(const TcxSSFormulasCache&) = delete;
    TcxSSFormulasCache& operator=(const TcxSSFormulasCache&) = delete;

    // --- settings ---
    void setSheets(const FormulaSheets* sheets) noexcept { sheets_ = sheets; }
    const FormulaSheets* sheets() const noexcept { return sheets_; }
    const LocaleSettings& locale() const noexcept { return locale_; }
    void setLocale(const LocaleSettings& locale) { locale_ = locale; }
    bool r1c1() const noexcept { return r1c1_; }
    void setR1C1(bool on) noexcept { r1c1_ = on; }
    void setSilent(bool silent) noexcept { silent_ = silent; }
    bool silent() const noexcept { return silent_; }
    void setMessageHandler(std::function<void(const std::string&)> handler) { messageHandler_ = std::move(handler); }
    void setClock(const FormulaClock* clock) noexcept { clock_ = clock ? clock : &systemClock_; }
    void setRandom(FormulaRandom* random) noexcept { random_ = random ? random : &defaultRandom_; }
    const FormulaClock& clock() const noexcept { return *clock_; }
    FormulaRandom& random() noexcept { return *random_; }
    FunctionTable& functions() noexcept { return functions_; }
    FormulaScope scope() const noexcept;

    // --- flags ---
    bool parseFailed = false;
    bool cycleFound = false;
    bool cycleInPass = false;

    // The one message point.
    void message(const std::string& text);

    // --- names ---
    const std::vector<FormulaName>& names() const noexcept { return names_; }
    void addName(FormulaName name) { names_.push_back(std::move(name)); }
    void deleteName(size_t index);

    // --- compiling ---
    std::unique_ptr<CellFormula> compile(std::string_view text, std::int32_t sheet, CellPoint cell) override;
    // Compiles without making a record or sending messages.
    CompileResult compileText(std::string_view text, std::int32_t sheet, CellPoint cell) const;
    // Tokens back to text for the given own cell; raises ECalculationError.
    std::string tokensText(std::string_view tokens, CellPoint cell) const;

    // --- calculation ---
    // A positive lock count means automatic calculation is off.
    void beginUpdate() noexcept { ++lockCount_; }
    void endUpdate();
    bool autoRecalc() const noexcept { return lockCount_ <= 0; }
    void setAutoRecalc(bool on);
    void calcFormula(FormulaRecord& record, bool force = false);
    // Both passes; `force` runs them even while calculation is locked.
    void recalc(bool force = false);
    size_t formulaCount() const noexcept { return formulas_.size() - holes_; }

    // The text a formula cell shows: with showFormulas the text from its
    // tokens; text only: its text; otherwise its value, calculated when it
    // has none ("0" when it still has none), numbers as float text.
    std::string valueText(CellFormula& formula, bool showFormulas = false);
    static std::string resultText(const CellValue& value, const LocaleSettings& locale);

    // --- sheets ---
    void exchangeSheets(std::int32_t a, std::int32_t b);
    void sheetDeleted(std::int32_t sheet);
    // Moves and resizes the defined names on the changed sheet.
    void updateNames(const StructureChange& change);

private:
    friend class FormulaRecord;
    void registerRecord(FormulaRecord& record);
    void unregisterRecord(FormulaRecord& record) noexcept;
    template <typename Visit>
    void forEachRecord(bool backward, Visit&& visit);

    const FormulaSheets* sheets_;
    LocaleSettings locale_;
    bool r1c1_ = false;
    bool silent_ = false;
    std::function<void(const std::string&)> messageHandler_;
    SystemClock systemClock_;
    DefaultRandom defaultRandom_;
    const FormulaClock* clock_ = &systemClock_;
    FormulaRandom* random_ = &defaultRandom_;
    FunctionTable functions_;
    std::vector<FormulaName> names_;
    std::vector<FormulaRecord*> formulas_;
    size_t holes_ = 0;
    int lockCount_ = 0;
    bool forcing_ = false;  // a forced recalculation runs while locked
    FormulaEvaluator evaluator_;
};

}  // namespace zorfa::sheet
