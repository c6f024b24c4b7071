#pragma once

#include "engine/sqlite/FileHandle.h"
#include "engine/sqlite/salvage/BtreePage.h"

#include <QByteArray>

#include <vector>

namespace velmora::engine::salvage {

// A database file as a row of numbered pages, read without the store: the store refuses a file that is damaged in the
// wrong place, this reads whatever page can be read.
class PageFile {
public:
    // The page size is the header's where pages of that size are found, else the size at which the most pages make
    // sense. Throws Damaged when there are none at any size: the file is not a database.
    explicit PageFile(const QByteArray& path);

    quint32 PageCount() const { return pageCount_; }
    quint32 PageSize() const { return pageSize_; }
    // The page size without what is reserved at each page's end.
    quint32 Usable() const { return usable_; }
    // Numbers that the file's owner has set, 0 where the header is broken.
    quint32 UserVersion() const { return userVersion_; }
    quint32 ApplicationId() const { return applicationId_; }
    // The first page of the list of free pages; 0 where there is none or the header is broken.
    quint32 FirstFreePage() const { return firstFreePage_; }

    // False for a page that the file does not have, or that the disk fails to read.
    bool Read(quint32 number, std::vector<unsigned char>& page) const;

private:
    void ReadHeader();
    double SoundShare(quint32 pageSize, quint32 usable);
    void GuessPageSize();

    sqlite::FileHandle file_;
    qint64 size_ = 0;
    quint32 pageSize_ = 0;
    quint32 usable_ = 0;
    quint32 pageCount_ = 0;
    quint32 userVersion_ = 0;
    quint32 applicationId_ = 0;
    quint32 firstFreePage_ = 0;
    bool headerIsSound_ = false;
};

} // namespace velmora::engine::salvage
