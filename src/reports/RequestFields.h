#pragma once

#include "reports/Requests.h"

#include <QStringList>

#include <span>

namespace velmora {

// A value of an enumeration by the name that people write for it.
template <typename T>
struct NamedValue {
    const char* name;
    T value;
};

// What is done with each field of a request or a delivery. A field's name is its key in JSON and, behind two hyphens,
// its option on a command line; `help` says what it means, null for a field that command lines do not offer.
class FieldVisitor {
public:
    virtual ~FieldVisitor() = default;

    virtual void Flag(const char* name, bool& value, const char* help) = 0;
    // A whole number of at least 1.
    virtual void Count(const char* name, int& value, const char* help) = 0;
    // A day that must be there.
    virtual void Day(const char* name, std::optional<Date>& value, const char* help) = 0;
    // Empty for none.
    virtual void Text(const char* name, QString& value, const char* help) = 0;
    virtual void Recipients(const char* name, std::vector<MailRecipient>& value, const char* help) = 0;
    // One of a few names, which must be there.
    template <typename T, size_t count>
    void Choice(const char* name, const NamedValue<T> (&names)[count], T& value, const char* help) {
        std::optional<T> chosen = value;
        Choose<T>(name, names, chosen, true, help);
        value = chosen.value_or(value);
    }
    // One of a few names, or none.
    template <typename T, size_t count>
    void Choice(const char* name, const NamedValue<T> (&names)[count], std::optional<T>& value, const char* help) {
        Choose<T>(name, names, value, false, help);
    }
    // The next fields belong to this value of a choice. False when they are passed over, for another one is chosen.
    virtual bool BelongTo(const char* choice, const char* chosen, bool isChosen, const QStringList& fields) = 0;

protected:
    // `index` counts the names from 0; -1 for none of them.
    virtual void ChooseIndex(const char* name, const QStringList& names, int& index, bool required,
                             const char* help) = 0;

private:
    template <typename T>
    void Choose(const char* name, std::span<const NamedValue<T>> values, std::optional<T>& value, bool required,
                const char* help) {
        QStringList names;
        int index = -1;
        for (const NamedValue<T>& each : values) {
            if (value == each.value) {
                index = static_cast<int>(names.size());
            }
            names += QString::fromLatin1(each.name);
        }
        ChooseIndex(name, names, index, required, help);
        if (index >= 0) {
            value = values[static_cast<size_t>(index)].value;
        }
    }
};

// Shows every field to the visitor, each after those that it depends on.
void VisitFields(ReportRequest& request, FieldVisitor& visitor);
void VisitFields(Delivery& delivery, FieldVisitor& visitor);

// A kind of report by the name that JSON and command lines know it by.
struct ReportKind {
    const char* name;
    const char* help;
    // A request of this kind with nothing chosen.
    ReportRequest request;
};

std::vector<ReportKind> ReportKinds();

} // namespace velmora
