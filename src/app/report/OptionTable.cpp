#include "app/report/OptionTable.h"

#include "app/report/CommandLine.h"

#include <algorithm>

namespace velmora::report {

using namespace Qt::StringLiterals;

void OptionTable::AddFlag(const QString& name, bool& flag) {
    options_.push_back({name, &flag, {}});
}

void OptionTable::AddValue(const QString& name, Apply apply) {
    options_.push_back({name, nullptr, std::move(apply)});
}

const OptionTable::Option* OptionTable::Find(const QString& name) const {
    const auto found = std::find_if(options_.begin(), options_.end(), [&](const Option& o) { return o.name == name; });
    return found == options_.end() ? nullptr : &*found;
}

bool OptionTable::TakeOption(Words& words) const {
    const QString name = words.Peek().section(u'=', 0, 0);
    const Option* option = Find(name);
    if (option == nullptr) {
        return false;
    }
    const QString word = words.Take();
    const bool hasValue = word.size() > name.size();
    if (option->flag != nullptr) {
        if (hasValue) {
            throw BadUsage{u"%1 takes no value"_s.arg(name)};
        }
        *option->flag = true;
        return true;
    }
    if (!hasValue && words.AtEnd()) {
        throw BadUsage{u"%1 needs a value"_s.arg(name)};
    }
    option->apply(hasValue ? word.mid(name.size() + 1) : words.Take());
    return true;
}

} // namespace velmora::report
