#include "layouts/formula/FormulaError.h"

namespace velmora::layouts {

using namespace Qt::StringLiterals;

namespace {

QString Describe(const QString& what, QStringView formula, qsizetype at) {
    constexpr qsizetype shown = 24;
    const QStringView rest = formula.sliced(std::min(at, formula.size()));
    const QString place = rest.isEmpty() ? u"at its end"_s
                                         : u"at position %1 (\"%2%3\")"_s.arg(at + 1).arg(
                                               rest.first(std::min(shown, rest.size())).toString().simplified(),
                                               rest.size() > shown ? u"..."_s : QString());
    return u"The selection formula is wrong %1: %2."_s.arg(place, what);
}

} // namespace

FormulaError::FormulaError(const QString& what, QStringView formula, qsizetype at)
    : Error(static_cast<int>(ErrorNumber::InvalidCall), Describe(what, formula, at), u"Velmora"_s, formula.toString()),
      at_(at) {}

} // namespace velmora::layouts
