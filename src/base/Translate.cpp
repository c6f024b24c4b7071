#include "base/Translate.h"

#include "base/Program.h"

namespace velmora {

void TranslationDictionary::Add(const QString& english, const QString& translated) {
    texts_.insert(english.toCaseFolded(), translated);
}

QString TranslationDictionary::Lookup(const QString& english) const {
    if (texts_.isEmpty()) {
        return english;
    }
    return texts_.value(english.toCaseFolded(), english);
}

QString Translate(const QString& english) {
    Program* program = CurrentProgramOrNull();
    return program == nullptr ? english : program->Part<TranslationDictionary>().Lookup(english);
}

} // namespace velmora
