#pragma once

#include <QByteArray>
#include <QString>

namespace velmora {

enum class CellKind {
    Text,   // one line
    Lines,  // a text that may have several lines
    Choice, // one of the texts that the column offers
    Number, // a whole number that the store assigns
    Money,
    YesNo,
    Moment,
};

enum class Editing { Allowed, ReadOnly };

// One column of a grid and the field that it is bound to.
struct BoundColumn {
    QString caption;
    // Name of the field in the grid's record set.
    QByteArray field;
    CellKind kind = CellKind::Text;
    Editing editing = Editing::Allowed;
    // Width at first, in letters of the grid's font.
    int letters = 12;
};

} // namespace velmora
