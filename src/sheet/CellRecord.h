#pragma once
// CellRecord: what one materialised cell holds. A cell that was never written
// has no record at all; reading it gives the storage's empty template.

#include <cstdint>
#include <memory>
#include <string>

#include "sheet/CellFormulaLink.h"
#include "sheet/StyleRecords.h"

namespace zorfa::sheet {

enum class CellKind : std::uint8_t { Text = 0, Formula = 1, Number = 2, Object = 3 };

// An object a cell owns (kind 3); it dies when the cell is cleared.
class TcxSSCellOwnedObject {
public:
    virtual ~TcxSSCellOwnedObject() = default;
    virtual std::unique_ptr<TcxSSCellOwnedObject> clone() const = 0;
};

struct CellRecord {
    std::string text;  // typed text, a number's float text, or the formula text
    StyleHandle style;
    CellKind kind = CellKind::Text;
    double number = 0.0;                            // kind Number
    std::unique_ptr<CellFormula> formula;           // kind Formula
    std::unique_ptr<TcxSSCellOwnedObject> object;   // kind Object

    CellRecord() = default;
    CellRecord(CellRecord&&) noexcept = default;
    CellRecord& operator=(CellRecord&&) noexcept = default;

    // A deep copy: the formula and the object are cloned, the style is shared.
    CellRecord copy() const {
        CellRecord c;
        c.text = text;
        c.style = style;
        c.kind = kind;
        c.number = number;
        if (formula) c.formula = formula->clone();
        if (object) c.object = object->clone();
        return c;
    }

    // Equal as the storage compares on write: text, style, kind and value; a
    // formula or an object is equal only to itself.
    bool sameAs(const CellRecord& other) const noexcept {
        return text == other.text && style == other.style && kind == other.kind && number == other.number &&
               formula.get() == other.formula.get() && object.get() == other.object.get();
    }

    // Empty as the used area counts: no text and not a formula or object.
    bool isEmpty() const noexcept { return text.empty() && kind == CellKind::Text; }
};

}  // namespace zorfa::sheet
