#include "print/PrintAttributes.h"

namespace velmora::print {

void AttributeTable::Load(const AttributeSource& source) {
    styles_.clear();
    try {
        for (const PrintAttribute& attribute : source()) {
            if (!styles_.contains(attribute.caption)) {
                styles_.insert(attribute.caption, attribute.style);
            }
        }
    } catch (const std::exception&) {
        // Styles only adorn a report; without the table it is printed plain.
        styles_.clear();
    }
}

} // namespace velmora::print
