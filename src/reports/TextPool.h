#pragma once

#include "engine/Recordset.h"

#include <QStringView>

#include <algorithm>
#include <memory>
#include <memory_resource>

namespace velmora {

// Keeps the texts of a report's rows, as UTF-8. Its views are good as long as the pool, also when it is moved.
class TextPool {
public:
    QUtf8StringView Keep(std::string_view text) {
        if (text.empty()) {
            return {};
        }
        char* kept = static_cast<char*>(memory_->allocate(text.size(), 1));
        std::copy(text.begin(), text.end(), kept);
        return {kept, static_cast<qsizetype>(text.size())};
    }
    // The field as a person reads it; empty for an empty field.
    QUtf8StringView Keep(const engine::Field& field) {
        return field.StoredKind() == engine::Field::Kind::Text ? Keep(field.Utf8())
                                                               : Keep(std::string_view(field.ToText().toUtf8()));
    }

private:
    std::unique_ptr<std::pmr::monotonic_buffer_resource> memory_ =
        std::make_unique<std::pmr::monotonic_buffer_resource>();
};

inline bool BeginsWith(QUtf8StringView text, const QString& beginning) {
    const QByteArray bytes = beginning.toUtf8();
    return QByteArrayView(text).startsWith(bytes);
}

} // namespace velmora
