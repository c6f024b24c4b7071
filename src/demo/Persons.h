#pragma once

#include "demo/Assets.h"
#include "demo/Random.h"
#include "demo/RowSink.h"
#include "demo/Scale.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace velmora::demo {

struct Person {
    QString lastName;
    QString firstName;
    QString organization;
    // The office that the person occupies, as an index into the assets; -1 without one.
    int office = -1;
};

struct Staff {
    std::vector<Person> persons;
    // Persons of reservations who have left, or never were, in the list of persons.
    std::vector<Person> strangers;
};

// Every pair of names occurs once, strangers included, letter case apart.
Staff MakeStaff(const Scale& scale, Random random);

// The rows of [Person]. One person in twelve is assigned to another area or space type than that of their office.
void WritePersons(const std::vector<Person>& persons, const std::vector<Asset>& assets, Random random, RowSink& sink);

} // namespace velmora::demo
