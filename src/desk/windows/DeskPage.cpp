#include "desk/windows/DeskPage.h"

#include "base/windows/DateBox.h"

#include <QCheckBox>
#include <QSignalBlocker>

namespace velmora {

void DeskPage::Store() const {
    for (const KeptControl& each : kept_) {
        each.store();
    }
}

void DeskPage::Load() const {
    for (const KeptControl& each : kept_) {
        each.load();
    }
}

void DeskPage::Keep(std::function<void()> store, std::function<void()> load) {
    kept_.push_back({std::move(store), std::move(load)});
}

QCheckBox* DeskPage::NewCheck(const QString& name, const QString& caption, bool& kept) {
    auto* box = NewControl<QCheckBox>(name, caption);
    Keep([box, &kept] { kept = box->isChecked(); }, [box, &kept] { box->setChecked(kept); });
    return box;
}

DateBox* DeskPage::NewDate(const QString& name, std::optional<Date>& kept) {
    auto* box = new DateBox(services().localeText, services().clock);
    box->setObjectName(name);
    Keep([box, &kept] { kept = box->Value(); },
         [box, &kept] {
             const QSignalBlocker quiet(box);
             box->SetValue(kept);
         });
    return box;
}

OptionGroup DeskPage::NewOptions(const QString& name, const std::vector<OptionCaption>& captions, qint16& kept) {
    OptionGroup options(this, name, captions);
    Keep([options, &kept] { kept = static_cast<qint16>(options.Chosen()); },
         [options, &kept] {
             const QSignalBlocker quiet(options.Group());
             options.Choose(kept);
         });
    return options;
}

} // namespace velmora
