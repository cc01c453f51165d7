#pragma once
// The exceptions of the spreadsheet model. Each carries the system's own
// message text; the shell's catch-all shows it.

#include "base/Errors.h"

namespace zorfa::sheet {

// A failure of a sheet operation, e.g. "Some modify cells is merged".
class ESpreadSheetError : public Exception {
public:
    using Exception::Exception;
};

// A style index past the style list: "Invalid cell style".
class EStyleError : public Exception {
public:
    using Exception::Exception;
};

}  // namespace zorfa::sheet
