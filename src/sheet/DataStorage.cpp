#include "sheet/DataStorage.h"

#include <algorithm>
#include <array>

#include "sheet/DataStorageScopes.h"
#include "sheet/NumberFormat.h"

namespace zorfa::sheet {

TcxSSDataStorage::TcxSSDataStorage(TcxSSStyleCache& styles, std::int32_t sheetIndex)
    : styles_(styles),
      sheetIndex_(sheetIndex),
      ownListener_(std::make_unique<TcxSSListener>()),
      listener_(ownListener_.get()) {
    empty_.style = styles_.defaultStyle();
}

TcxSSDataStorage::~TcxSSDataStorage() = default;

void TcxSSDataStorage::setListener(TcxSSListener* listener) noexcept {
    listener_ = listener ? listener : ownListener_.get();
}

bool TcxSSDataStorage::historyOn() const noexcept {
    return history_ && !isLocked() && history_->isRecording();
}

CellRecord* TcxSSDataStorage::slot(std::int32_t column, std::int32_t row) noexcept {
    if (column < 0 || row < 0 || column >= capacityColumns() || row >= capacityRows_) return nullptr;
    return columns_[static_cast<std::size_t>(column)].cells[static_cast<std::size_t>(row)].get();
}

const CellRecord* TcxSSDataStorage::findCell(std::int32_t column, std::int32_t row) const noexcept {
    return const_cast<TcxSSDataStorage*>(this)->slot(column, row);
}

const CellRecord& TcxSSDataStorage::cell(std::int32_t column, std::int32_t row) const noexcept {
    const CellRecord* record = findCell(column, row);
    return record ? *record : empty_;
}

std::int32_t TcxSSDataStorage::rowsUsed(std::int32_t column) const noexcept {
    if (column < 0 || column >= capacityColumns()) return 0;
    return columns_[static_cast<std::size_t>(column)].rowsUsed;
}

void TcxSSDataStorage::setCapacity(std::int32_t columns, std::int32_t rows) {
    if (rows > capacityRows_) {
        for (auto& column : columns_) column.cells.resize(static_cast<std::size_t>(rows));
        capacityRows_ = rows;
    }
    if (columns > capacityColumns()) {
        std::size_t old = columns_.size();
        columns_.resize(static_cast<std::size_t>(columns));
        for (std::size_t i = old; i < columns_.size(); ++i)
            columns_[i].cells.resize(static_cast<std::size_t>(capacityRows_));
    }
}

CellRecord& TcxSSDataStorage::materialise(std::int32_t column, std::int32_t row) {
    if (column >= capacityColumns()) setCapacity(column + kColumnDelta, capacityRows_);
    if (row >= capacityRows_) setCapacity(capacityColumns(), row + kRowDelta);
    auto& owner = columns_[static_cast<std::size_t>(column)].cells[static_cast<std::size_t>(row)];
    if (!owner) {
        owner = std::make_unique<CellRecord>();
        owner->style = styles_.defaultStyle();
    }
    return *owner;
}

void TcxSSDataStorage::noteWritten(std::int32_t column, std::int32_t row) {
    Column& col = columns_[static_cast<std::size_t>(column)];
    col.rowsUsed = std::max(col.rowsUsed, row + 1);
    if (column + 1 > columnCount_) {
        columnCount_ = column + 1;
        listener_->countChanged(0, columnCount_);
    }
    if (row + 1 > rowCount_) {
        rowCount_ = row + 1;
        listener_->countChanged(1, rowCount_);
    }
    listener_->cellChanged(column, row);
}

void TcxSSDataStorage::recordCell(std::int32_t column, std::int32_t row) {
    if (historyOn()) history_->cellChanging(*this, column, row, cell(column, row));
}

void TcxSSDataStorage::setCell(std::int32_t column, std::int32_t row, CellRecord record) {
    if (column < 0 || row < 0) return;
    if (!record.style) record.style = styles_.defaultStyle();
    if (cell(column, row).sameAs(record)) return;
    listener_->markModified();
    recordCell(column, row);
    materialise(column, row) = std::move(record);
    noteWritten(column, row);
}

void TcxSSDataStorage::setStyle(std::int32_t column, std::int32_t row, StyleHandle style) {
    if (column < 0 || row < 0 || !style || cell(column, row).style == style) return;
    listener_->markModified();
    recordCell(column, row);
    materialise(column, row).style = std::move(style);
    noteWritten(column, row);
}

void TcxSSDataStorage::setStyleFlags(std::int32_t column, std::int32_t row, std::uint8_t mask, bool on) {
    StyleFields fields = cell(column, row).style.fields();
    std::uint8_t flags = on ? (fields.flags | mask) : (fields.flags & ~mask);
    if (flags == fields.flags) return;
    fields.flags = flags;
    setStyle(column, row, styles_.addStyle(fields));
}

void TcxSSDataStorage::dropFormula(CellRecord& record) {
    record.formula.reset();
    if (record.kind == CellKind::Formula) record.kind = CellKind::Text;
}

void TcxSSDataStorage::setText(std::int32_t column, std::int32_t row, std::string_view text, bool analyse,
                               bool forceFormula) {
    if (column < 0 || row < 0) return;
    const CellRecord& old = cell(column, row);
    const std::uint16_t format = old.style.fields().format;
    bool formula = forceFormula;
    if (!forceFormula && analyse) {
        std::size_t b = 0, e = text.size();
        while (b < e && static_cast<unsigned char>(text[b]) <= ' ') ++b;
        while (e > b && static_cast<unsigned char>(text[e - 1]) <= ' ') --e;
        std::string_view trimmed = text.substr(b, e - b);
        formula = trimmed.size() > 1 && trimmed[0] == '=' && trimmed.find('#') == std::string_view::npos &&
                  format != kFormatText;
    }
    CellRecord record;
    record.style = old.style;
    record.text = std::string(text);
    if (!formula && isPercentFormat(format)) {
        if (auto percent = text.find('%'); percent != std::string_view::npos) {
            double value = 0;
            if (locale_.parseNumber(text.substr(0, percent), value)) record.text = locale_.floatText(value / 100);
        }
    }
    setCell(column, row, std::move(record));
    if (formula) compileFormula(column, row);
}

void TcxSSDataStorage::compileFormula(std::int32_t column, std::int32_t row) {
    if (!compiler_) return;
    const CellRecord& current = cell(column, row);
    std::unique_ptr<CellFormula> formula = compiler_->compile(current.text, sheetIndex_, {column, row});
    if (!formula) return;  // the text stays as it was typed
    CellRecord record;
    record.style = current.style;
    record.text = formula->text();
    record.kind = CellKind::Formula;
    record.formula = std::move(formula);
    setCell(column, row, std::move(record));
}

void TcxSSDataStorage::setNumber(std::int32_t column, std::int32_t row, double value) {
    CellRecord record;
    record.style = cell(column, row).style;
    record.text = locale_.floatText(value);
    record.number = value;
    record.kind = CellKind::Number;
    setCell(column, row, std::move(record));
}

std::optional<double> TcxSSDataStorage::numericValue(std::int32_t column, std::int32_t row) const {
    const CellRecord& record = cell(column, row);
    if (record.kind == CellKind::Number) return record.number;
    if (record.kind == CellKind::Formula && record.formula) {
        const CellValue* result = record.formula->cachedResult();
        if (result && (result->kind == CellValueKind::Number || result->kind == CellValueKind::Boolean))
            return result->number;
        return std::nullopt;
    }
    double value = 0;
    if (record.kind == CellKind::Text && locale_.parseNumber(record.text, value)) return value;
    return std::nullopt;
}

namespace {

std::string resultText(const CellValue& value, const LocaleSettings& locale) {
    static constexpr std::array<const char*, 7> kErrors = {"#VALUE!", "#NULL!", "#DIV/0!", "#VALUE!",
                                                           "#REF!",   "#NUM!",  "#NAME!"};
    switch (value.kind) {
        case CellValueKind::Empty: return {};
        case CellValueKind::Number: return locale.floatText(value.number);
        case CellValueKind::Text: return value.text;
        case CellValueKind::Boolean: return value.boolean() ? "TRUE" : "FALSE";
        case CellValueKind::Error:
            return kErrors[value.errorCode() < kErrors.size() ? value.errorCode() : 0];
    }
    return {};
}

}  // namespace

std::string TcxSSDataStorage::valueText(const CellRecord& record) const {
    if (record.kind == CellKind::Number) return locale_.floatText(record.number);
    if (record.kind == CellKind::Formula && record.formula) {
        if (const CellValue* result = record.formula->cachedResult()) return resultText(*result, locale_);
    }
    return record.text;
}

std::string TcxSSDataStorage::displayText(std::int32_t column, std::int32_t row, int precision, bool* red) const {
    if (red) *red = false;
    const CellRecord& record = cell(column, row);
    const std::uint16_t format = record.style.fields().format;
    if (format == kFormatText && record.kind == CellKind::Text) return record.text;
    std::optional<double> number = numericValue(column, row);
    bool isBoolean = record.kind == CellKind::Formula && record.formula && record.formula->cachedResult() &&
                     record.formula->cachedResult()->kind == CellValueKind::Boolean;
    if (!number || isBoolean) return valueText(record);
    FormattedNumber shown = formatNumber(*number, format, precision, locale_);
    if (red) *red = shown.red;
    return shown.text;
}

std::int32_t TcxSSDataStorage::lastUsedColumn() const noexcept {
    for (std::int32_t c = capacityColumns() - 1; c >= 0; --c) {
        const Column& col = columns_[static_cast<std::size_t>(c)];
        for (std::int32_t r = 0; r < col.rowsUsed; ++r) {
            const auto& record = col.cells[static_cast<std::size_t>(r)];
            if (record && !record->isEmpty()) return c + 1;
        }
    }
    return 0;
}

std::int32_t TcxSSDataStorage::lastUsedRow() const noexcept {
    std::int32_t last = 0;
    for (const Column& col : columns_) {
        for (std::int32_t r = col.rowsUsed - 1; r >= last; --r) {
            const auto& record = col.cells[static_cast<std::size_t>(r)];
            if (record && !record->isEmpty()) {
                last = r + 1;
                break;
            }
        }
    }
    return last;
}

std::size_t TcxSSDataStorage::recordCount() const noexcept {
    std::size_t count = 0;
    for (const Column& col : columns_) {
        for (std::int32_t r = 0; r < col.rowsUsed; ++r) count += col.cells[static_cast<std::size_t>(r)] != nullptr;
    }
    return count;
}

void TcxSSDataStorage::recomputeRowsUsed(Column& column) noexcept {
    while (column.rowsUsed > 0 && !column.cells[static_cast<std::size_t>(column.rowsUsed - 1)]) --column.rowsUsed;
}

bool TcxSSDataStorage::clearCells(CellRect rect, bool clearStyle) {
    if (!isLocked() && !listener_->canClearCells(rect)) return false;
    if (rect == TcxSSUtils::kWholeSheet) rect = {0, 0, columnCount_, rowCount_};
    rect = TcxSSUtils::normalized(rect);
    listener_->markModified();
    {
        ActionScope action(*this, StorageAction{StorageAction::Kind::ClearCells, rect, ShiftMode::Horizontal,
                                                nullptr, "Delete cells"});
        ListenerLock quiet(*listener_);
        if (clearStyle) merged_.removeInside(rect);
        const std::int32_t lastColumn = std::min(rect.right, capacityColumns() - 1);
        for (std::int32_t c = std::max(rect.left, 0); c <= lastColumn; ++c) {
            Column& col = columns_[static_cast<std::size_t>(c)];
            const std::int32_t lastRow = std::min(rect.bottom, col.rowsUsed - 1);
            for (std::int32_t r = std::max(rect.top, 0); r <= lastRow; ++r) {
                auto& owner = col.cells[static_cast<std::size_t>(r)];
                if (!owner) continue;
                recordCell(c, r);
                if (clearStyle) {
                    owner.reset();
                    continue;
                }
                owner->formula.reset();
                owner->object.reset();
                owner->number = 0;
                owner->kind = CellKind::Text;
                owner->text.clear();
            }
            if (clearStyle) recomputeRowsUsed(col);
        }
    }
    listener_->cellsCleared(rect);
    return true;
}

void TcxSSDataStorage::moveCells(std::int32_t toColumn, std::int32_t fromColumn, bool clear, std::int32_t rowCount,
                                 std::int32_t toRow, std::int32_t fromRow) {
    if (toColumn < 0 || fromColumn < 0 || toRow < 0 || fromRow < 0 || rowCount <= 0) return;
    std::vector<CellRecord> block;
    block.reserve(static_cast<std::size_t>(rowCount));
    for (std::int32_t i = 0; i < rowCount; ++i) block.push_back(cell(fromColumn, fromRow + i).copy());
    if (clear) {
        const CellRect target{toColumn, toRow, toColumn, toRow + rowCount - 1};
        for (std::int32_t i = 0; i < rowCount; ++i) {
            if (!TcxSSUtils::contains(target, fromColumn, fromRow + i)) setCell(fromColumn, fromRow + i, CellRecord{});
        }
    }
    for (std::int32_t i = 0; i < rowCount; ++i) {
        CellRecord& record = block[static_cast<std::size_t>(i)];
        if (record.formula) {
            record.formula->setCell(sheetIndex_, {toColumn, toRow + i});
            record.text = record.formula->text();
        }
        setCell(toColumn, toRow + i, std::move(record));
    }
}

void TcxSSDataStorage::clearAll() {
    LockScope lock(*this);
    columns_.clear();
    capacityRows_ = 0;
    columnCount_ = 0;
    rowCount_ = 0;
    merged_.clear();
    columnHeader_.clear();
    rowHeader_.clear();
    listener_->markModified();
}

void TcxSSDataStorage::assign(const TcxSSDataStorage& other) {
    if (&other == this) return;
    LockScope lock(*this);
    columns_.clear();
    capacityRows_ = 0;
    setCapacity(other.capacityColumns(), other.capacityRows_);
    for (std::size_t c = 0; c < other.columns_.size(); ++c) {
        const Column& from = other.columns_[c];
        Column& to = columns_[c];
        to.rowsUsed = from.rowsUsed;
        for (std::int32_t r = 0; r < from.rowsUsed; ++r) {
            const auto& record = from.cells[static_cast<std::size_t>(r)];
            if (!record) continue;
            to.cells[static_cast<std::size_t>(r)] = std::make_unique<CellRecord>(record->copy());
            if (auto& formula = to.cells[static_cast<std::size_t>(r)]->formula)
                formula->setCell(sheetIndex_, {static_cast<std::int32_t>(c), r});
        }
    }
    columnCount_ = other.columnCount_;
    rowCount_ = other.rowCount_;
    merged_ = other.merged_;
    columnHeader_ = other.columnHeader_;
    rowHeader_ = other.rowHeader_;
    caption_ = other.caption_;
    listener_->markModified();
}

void TcxSSDataStorage::setSelection(const CellRect& rect) {
    selection_ = TcxSSUtils::normalized(rect);
    if (TcxSSUtils::isSingleCell(selection_)) selectionKind_ = 0;
    else if (merged_.rangeAt(selection_.left, selection_.top) == selection_) selectionKind_ = 2;
    else selectionKind_ = 1;
}

CellRect TcxSSDataStorage::getCellRect(std::int32_t row, std::int32_t column, bool useMerged,
                                       std::int32_t scrollColumn, std::int32_t scrollRow) const {
    const CellRect cells = useMerged ? merged_.cellRange(column, row) : CellRect{column, row, column, row};
    auto offset = [](const TcxSSHeader& header, std::int32_t from, std::int32_t to) {
        return to >= from ? header.span(from, to) : -header.span(to, from);
    };
    const auto left = static_cast<std::int32_t>(offset(columnHeader_, scrollColumn, cells.left));
    const auto top = static_cast<std::int32_t>(offset(rowHeader_, scrollRow, cells.top));
    return {left, top, left + static_cast<std::int32_t>(columnHeader_.span(cells.left, cells.right + 1)),
            top + static_cast<std::int32_t>(rowHeader_.span(cells.top, cells.bottom + 1))};
}

CellContent TcxSSDataStorage::readCell(std::int32_t column, std::int32_t row) const {
    const CellRecord* record = findCell(column, row);
    CellContent content;
    if (!record) return content;
    content.text = record->text;
    switch (record->kind) {
        case CellKind::Text:
            content.kind = record->text.empty() ? CellContent::Kind::Empty : CellContent::Kind::Text;
            break;
        case CellKind::Number:
            content.kind = CellContent::Kind::Number;
            content.number = record->number;
            break;
        case CellKind::Formula:
            content.kind = CellContent::Kind::Formula;
            content.formula = record->formula.get();
            break;
        case CellKind::Object: content.kind = CellContent::Kind::Object; break;
    }
    return content;
}

void TcxSSDataStorage::forEachFormula(const std::function<void(CellFormula&)>& visit) const {
    for (const Column& col : columns_) {
        for (std::int32_t r = 0; r < col.rowsUsed; ++r) {
            const auto& record = col.cells[static_cast<std::size_t>(r)];
            if (record && record->formula) visit(*record->formula);
        }
    }
}

}  // namespace zorfa::sheet
