#pragma once

#include "engine/Database.h"

#include <QString>

#include <cstdlib>
#include <optional>

namespace velmora {

// One asset as the program keeps it in memory, and the two changes that it can undergo.
class AssetInfo {
public:
    // Floor and place on the floor plan; a negative number is kept without its sign.
    int LocationLevel() const { return locationLevel_; }
    void SetLocationLevel(int level) { locationLevel_ = std::abs(level); }
    int LocationX() const { return locationX_; }
    void SetLocationX(int x) { locationX_ = std::abs(x); }
    int LocationY() const { return locationY_; }
    void SetLocationY(int y) { locationY_ = std::abs(y); }

    // Kept to its first 255 characters, then without blanks at its ends.
    const QString& Description() const { return description_; }
    void SetDescription(const QString& description) { description_ = description.left(255).trimmed(); }

    // The asset's number.
    qint16 nAsset() const { return nAsset_; }
    void SetnAsset(qint16 number) { nAsset_ = number; }

    // Whether the asset is a place; anything but a true value, an empty one too, means no.
    bool nLocation() const { return nLocation_; }
    void SetnLocation(const Value& location) { nLocation_ = location.ToBool(); }

    // The name: kept to its first 15 characters, then without blanks at its ends. Only Rename keeps a longer one.
    const QString& strName() const { return strName_; }
    void SetstrName(const QString& name) { strName_ = name.left(15).trimmed(); }
    const QString& Name() const { return strName_; }

    // The asset's picture in image lists: 1 a place, 2 a conference room, 3 a thing, 4 a guest telephone extension.
    int nListImage() const;

    // Gives the asset another name, in the database and here; asks for it when none is given. False when nothing was
    // changed: the name is empty or the present one, another asset has it, or the asset is gone; a message reports
    // the last two. The asset keeps its key in the collection. Throws EngineError.
    bool Rename(engine::Database& database, const std::optional<QString>& newName = std::nullopt);

    // Deletes the asset with its reservations and everything else that hangs on it, all or nothing, after asking.
    // False when nothing was changed: a conference room, which is never deleted, or the person said no. The asset stays
    // in the collection until that is filled anew. Throws EngineError.
    bool Delete(engine::Database& database) const;

private:
    bool ConfirmDelete() const;

    int locationLevel_ = 0;
    int locationX_ = 0;
    int locationY_ = 0;
    QString description_;
    QString strName_;
    qint16 nAsset_ = 0;
    bool nLocation_ = false;
};

} // namespace velmora
