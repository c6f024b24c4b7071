#include "ops/TranslationLoader.h"

#include "base/Program.h"
#include "base/Translate.h"
#include "data/Configuration.h"
#include "data/Helpers.h"
#include "data/IniEntry.h"
#include "data/NativePath.h"
#include "engine/Database.h"

namespace velmora {

namespace {

QStringList LanguageCodes() {
    INIEntry entry;
    entry.Section = QStringLiteral("Intl");
    entry.Key = QStringLiteral("sLanguage");
    const QString configured = entry.ReadWinIni();
    if (!configured.isEmpty()) {
        return {configured};
    }
    const QLocale& locale = CurrentProgram().services().localeText.Locale();
    QStringList codes{locale.name()};
    for (const QString& code : {locale.name().section(u'_', 0, 0), QLocale::languageToString(locale.language())}) {
        if (!code.isEmpty() && !codes.contains(code)) {
            codes += code;
        }
    }
    return codes;
}

// The number of texts that the store has for the language.
qsizetype LoadLanguage(engine::Database& store, const QString& code, TranslationDictionary& dictionary) {
    const auto rows = store.OpenRecordset(QStringLiteral("Select * from Language where Language = ") + SqlText(code));
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        const auto translated = (*rows)["Translated Text"];
        if (!translated.IsNull()) {
            dictionary.Add((*rows)["English Text"].ToText(), translated.ToText());
        }
    }
    return dictionary.Size();
}

} // namespace

void LoadTranslations() {
    Program& program = CurrentProgram();
    const QString path = DataDirectory() + QStringLiteral("\\language.mdb");
    if (!FileExists(path)) {
        return;
    }
    try {
        TranslationDictionary dictionary;
        const auto store = engine::Database::Open(NativePath(path));
        for (const QString& code : LanguageCodes()) {
            if (LoadLanguage(*store, code, dictionary) > 0) {
                break;
            }
        }
        program.Part<TranslationDictionary>() = std::move(dictionary);
    } catch (const Error& error) {
        program.services().log.Write(
            QStringLiteral("%1 could not be read, texts stay English: %2").arg(NativePath(path), error.Description()));
    }
}

} // namespace velmora
