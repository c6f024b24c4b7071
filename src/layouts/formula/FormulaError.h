#pragma once

#include "base/Error.h"

namespace velmora::layouts {

// A formula that cannot be read. `at` counts characters from 0; the description names the place for a person already.
class FormulaError : public Error {
public:
    FormulaError(const QString& what, QStringView formula, qsizetype at);
    qsizetype At() const { return at_; }

private:
    qsizetype at_;
};

} // namespace velmora::layouts
