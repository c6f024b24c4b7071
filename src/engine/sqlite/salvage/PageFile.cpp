#include "engine/sqlite/salvage/PageFile.h"

#include "engine/EngineError.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <limits>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace velmora::engine::salvage {

namespace {

constexpr size_t headerSize = 100;
constexpr quint32 smallestPage = 512;
constexpr quint32 largestPage = 65536;

bool ReadFully(int descriptor, unsigned char* bytes, size_t size, qint64 offset) {
    while (size > 0) {
        const ssize_t got = ::pread(descriptor, bytes, size, offset);
        if (got <= 0) {
            if (got < 0 && errno == EINTR) {
                continue;
            }
            return false;
        }
        bytes += got;
        offset += got;
        size -= static_cast<size_t>(got);
    }
    return true;
}

} // namespace

PageFile::PageFile(const QByteArray& path) : file_(sqlite::OpenFile(path, O_RDONLY)) {
    struct stat status = {};
    if (!file_ || ::fstat(file_.Get(), &status) != 0) {
        sqlite::ThrowFileError(errno, u"read"_s, path);
    }
    size_ = status.st_size;
    ReadHeader();
    if (!headerIsSound_) {
        GuessPageSize();
    }
    pageCount_ = static_cast<quint32>(std::min<qint64>(size_ / pageSize_, std::numeric_limits<quint32>::max() - 1));
    if (firstFreePage_ > pageCount_) {
        firstFreePage_ = 0;
    }
}

// Believes the header only as a whole: where its beginning was overwritten, so may be the rest.
void PageFile::ReadHeader() {
    std::vector<unsigned char> header(headerSize);
    if (!ReadFully(file_.Get(), header.data(), headerSize, 0) ||
        std::memcmp(header.data(), "SQLite format 3", 16) != 0) {
        return;
    }
    const quint32 stored = BigEndian16(header, 16);
    const quint32 pageSize = stored == 1 ? largestPage : stored;
    const quint32 reserved = header[20];
    const bool isPowerOfTwo = (pageSize & (pageSize - 1)) == 0;
    if (pageSize < smallestPage || !isPowerOfTwo || pageSize - reserved < 480 ||
        SoundShare(pageSize, pageSize - reserved) == 0) {
        return;
    }
    headerIsSound_ = true;
    pageSize_ = pageSize;
    usable_ = pageSize - reserved;
    firstFreePage_ = BigEndian32(header, 32);
    userVersion_ = BigEndian32(header, 60);
    applicationId_ = BigEndian32(header, 68);
}

// The share of pages that are sound tree pages with entries, among the first ones and a sample of the others.
double PageFile::SoundShare(quint32 pageSize, quint32 usable) {
    constexpr qint64 atTheStart = 64;
    constexpr qint64 sample = 256;
    const qint64 pages = size_ / pageSize;
    const qint64 step = std::max<qint64>(1, pages / sample);
    std::vector<unsigned char> bytes(pageSize);
    BtreePage page;
    int tried = 0;
    int sound = 0;
    for (qint64 index = 0; index < pages; index += index < atTheStart ? 1 : step) {
        ++tried;
        if (ReadFully(file_.Get(), bytes.data(), pageSize, index * pageSize) &&
            page.Parse(bytes, static_cast<quint32>(index) + 1, usable) && !page.cells.empty()) {
            ++sound;
        }
    }
    return tried == 0 ? 0 : static_cast<double>(sound) / tried;
}

void PageFile::GuessPageSize() {
    double best = 0;
    for (quint32 pageSize = smallestPage; pageSize <= largestPage; pageSize *= 2) {
        const double share = SoundShare(pageSize, pageSize);
        if (share > best) {
            best = share;
            pageSize_ = pageSize;
        }
    }
    if (best == 0) {
        throw EngineError(EngineErrorNumber::Damaged, u"nothing in it looks like a part of a database"_s);
    }
    usable_ = pageSize_;
}

bool PageFile::Read(quint32 number, std::vector<unsigned char>& page) const {
    if (number < 1 || number > pageCount_) {
        return false;
    }
    page.resize(pageSize_);
    return ReadFully(file_.Get(), page.data(), pageSize_, qint64{number - 1} * pageSize_);
}

} // namespace velmora::engine::salvage
