#include "platform/printers/CupsQueues.h"

#include "base/Error.h"

#include <QLatin1StringView>

#include <algorithm>
#include <cmath>
#include <cups/cups.h>
#include <cups/pwg.h>
#include <memory>

namespace velmora::printers {

using namespace Qt::StringLiterals;

namespace {

constexpr int connectMilliseconds = 5000;
constexpr double answerSeconds = 30;

struct Closer {
    void operator()(http_t* connection) const { httpClose(connection); }
    void operator()(cups_dinfo_t* info) const { cupsFreeDestInfo(info); }
};
using Connection = std::unique_ptr<http_t, Closer>;
using QueueInfo = std::unique_ptr<cups_dinfo_t, Closer>;

// Queues as the library hands them out: an array that it frees.
class QueueList {
public:
    explicit QueueList(http_t* connection) : count_(cupsGetDests2(connection, &queues_)) {}
    QueueList(http_t* connection, const QString& name)
        : queues_(cupsGetNamedDest(connection, name.toUtf8().constData(), nullptr)),
          count_(queues_ == nullptr ? 0 : 1) {}
    ~QueueList() { cupsFreeDests(count_, queues_); }
    QueueList(const QueueList&) = delete;
    QueueList& operator=(const QueueList&) = delete;

    cups_dest_t* begin() const { return queues_; }
    cups_dest_t* end() const { return queues_ + count_; }

private:
    cups_dest_t* queues_ = nullptr;
    int count_ = 0;
};

class Options {
public:
    Options(const cups_option_t* first, int count) {
        for (const cups_option_t* option = first; option != first + count; ++option) {
            Set(option->name, option->value);
        }
    }
    ~Options() { cupsFreeOptions(count_, options_); }
    Options(const Options&) = delete;
    Options& operator=(const Options&) = delete;

    void Set(const char* name, const char* value) { count_ = cupsAddOption(name, value, count_, &options_); }
    void Remove(const char* name) { count_ = cupsRemoveOption(name, count_, &options_); }
    int Count() const { return count_; }
    cups_option_t* First() const { return options_; }

private:
    int count_ = 0;
    cups_option_t* options_ = nullptr;
};

// Null where no print server answers.
Connection Connect() {
    // Nobody may be at a terminal to type a password.
    cupsSetPasswordCB2([](const char*, http_t*, const char*, const char*, void*) -> const char* { return nullptr; },
                       nullptr);
    Connection connection(
        httpConnect2(cupsServer(), ippPort(), nullptr, AF_UNSPEC, cupsEncryption(), 1, connectMilliseconds, nullptr));
    if (connection) {
        httpSetTimeout(connection.get(), answerSeconds, nullptr, nullptr);
    }
    return connection;
}

[[noreturn]] void ThrowUnknown(const QString& queue) {
    throw ProgramError(
        ErrorNumber::Unavailable,
        u"There is no printer \"%1\". It may have been removed or renamed; choose another one."_s.arg(queue));
}

Connection ConnectFor(const QString& queue) {
    Connection connection = Connect();
    if (!connection) {
        throw ProgramError(ErrorNumber::Unavailable,
                           u"The printer \"%1\" cannot be reached: the print system does not answer"_s.arg(queue));
    }
    return connection;
}

// The one queue of exactly this name: the library may offer another one in its place.
cups_dest_t& Find(const QueueList& found, const QString& name) {
    const auto queue = std::find_if(found.begin(), found.end(), [&](const cups_dest_t& candidate) {
        return QString::fromUtf8(candidate.name) == name && candidate.instance == nullptr;
    });
    if (queue == found.end()) {
        ThrowUnknown(name);
    }
    return *queue;
}

QString NameOf(const cups_dest_t& queue) {
    return QString::fromUtf8(queue.name);
}

constexpr double hundredthsOfMillimetrePerInch = 2540;

int Twips(int hundredthsOfMillimetre) {
    return static_cast<int>(std::lround(hundredthsOfMillimetre * 1440 / hundredthsOfMillimetrePerInch));
}

int HundredthsOfMillimetre(int twips) {
    return static_cast<int>(std::lround(twips * hundredthsOfMillimetrePerInch / 1440));
}

bool DefaultMedia(http_t* connection, cups_dest_t& queue, cups_dinfo_t* info, cups_size_t& size) {
    // A user may have chosen the paper under the name that old drivers gave it.
    const char* ppdName = cupsGetOption("PageSize", queue.num_options, queue.options);
    const pwg_media_t* chosen = ppdName == nullptr ? nullptr : pwgMediaForPPD(ppdName);
    if (chosen != nullptr && cupsGetDestMediaByName(connection, &queue, info, chosen->pwg, 0, &size) != 0) {
        return true;
    }
    return cupsGetDestMediaDefault(connection, &queue, info, CUPS_MEDIA_FLAGS_DEFAULT, &size) != 0;
}

double TwipsPerDot(http_t* connection, cups_dest_t& queue, cups_dinfo_t* info) {
    ipp_attribute_t* attribute = cupsFindDestDefault(connection, &queue, info, "printer-resolution");
    if (attribute == nullptr || ippGetValueTag(attribute) != IPP_TAG_RESOLUTION) {
        return PrinterPage().twipsPerDot;
    }
    int vertical = 0;
    ipp_res_t unit = IPP_RES_PER_INCH;
    ippGetResolution(attribute, 0, &vertical, &unit);
    const double perInch = unit == IPP_RES_PER_CM ? vertical * 2.54 : vertical;
    return perInch > 0 ? 1440 / perInch : PrinterPage().twipsPerDot;
}

// The user's own options for the queue, with what the document settles itself in their place.
void Settle(Options& options, const QueueJob& job, http_t* connection, cups_dest_t& queue, cups_dinfo_t* info) {
    for (const char* name : {"PageSize", "media", "media-col", "landscape", "orientation-requested", "fit-to-page"}) {
        options.Remove(name);
    }
    cups_size_t size{};
    if (cupsGetDestMediaBySize(connection, &queue, info, HundredthsOfMillimetre(job.paperWidth),
                               HundredthsOfMillimetre(job.paperHeight), CUPS_MEDIA_FLAGS_DEFAULT, &size) != 0) {
        options.Set("media", size.media);
    }
    // The pages keep the printer's margins already; scaling them would only move them off their place.
    options.Set("print-scaling", "none");
}

// The reason that the print system gave last.
[[noreturn]] void ThrowRefused(const QString& queue) {
    throw ProgramError(ErrorNumber::Unavailable, u"The printer \"%1\" did not take the document: %2"_s.arg(
                                                     queue, QString::fromUtf8(cupsLastErrorString())));
}

bool Send(http_t* connection, cups_dest_t& queue, cups_dinfo_t* info, int id, const QueueJob& job) {
    if (cupsStartDestDocument(connection, &queue, info, id, job.title.toUtf8().constData(), CUPS_FORMAT_PDF, 0, nullptr,
                              1) != HTTP_STATUS_CONTINUE) {
        return false;
    }
    const auto size = static_cast<size_t>(job.pdf.size());
    const bool written = cupsWriteRequestData(connection, job.pdf.constData(), size) == HTTP_STATUS_CONTINUE;
    return cupsFinishDestDocument(connection, &queue, info) <= IPP_STATUS_OK_CONFLICTING && written;
}

} // namespace

QStringList CupsQueues::Names() const {
    QStringList names;
    if (const Connection connection = Connect()) {
        for (const cups_dest_t& queue : QueueList(connection.get())) {
            if (queue.instance == nullptr) {
                names += NameOf(queue);
            }
        }
    }
    return names;
}

QString CupsQueues::DefaultName() const {
    if (const Connection connection = Connect()) {
        for (const cups_dest_t& queue : QueueList(connection.get())) {
            if (queue.is_default != 0) {
                return NameOf(queue);
            }
        }
    }
    return {};
}

std::optional<PrinterPage> CupsQueues::Paper(const QString& name) const {
    const Connection connection = ConnectFor(name);
    const QueueList found(connection.get(), name);
    cups_dest_t& queue = Find(found, name);
    const QueueInfo info(cupsCopyDestInfo(connection.get(), &queue));
    cups_size_t size{};
    if (!info || !DefaultMedia(connection.get(), queue, info.get(), size) || size.width <= 0 || size.length <= 0) {
        return std::nullopt;
    }
    PrinterPage page;
    page.paperWidth = Twips(size.width);
    page.paperHeight = Twips(size.length);
    page.left = Twips(size.left);
    page.top = Twips(size.top);
    page.width = page.paperWidth - page.left - Twips(size.right);
    page.height = page.paperHeight - page.top - Twips(size.bottom);
    page.twipsPerDot = TwipsPerDot(connection.get(), queue, info.get());
    return page;
}

void CupsQueues::Submit(const QString& name, const QueueJob& job) {
    const Connection connection = ConnectFor(name);
    const QueueList found(connection.get(), name);
    cups_dest_t& queue = Find(found, name);
    const QueueInfo info(cupsCopyDestInfo(connection.get(), &queue));
    if (!info) {
        ThrowRefused(name);
    }
    Options options(queue.options, queue.num_options);
    Settle(options, job, connection.get(), queue, info.get());
    int id = 0;
    if (cupsCreateDestJob(connection.get(), &queue, info.get(), &id, job.title.toUtf8().constData(), options.Count(),
                          options.First()) > IPP_STATUS_OK_CONFLICTING) {
        ThrowRefused(name);
    }
    if (!Send(connection.get(), queue, info.get(), id, job)) {
        const QString reason = QString::fromUtf8(cupsLastErrorString());
        // What has arrived of the document must not be printed.
        cupsCancelDestJob(connection.get(), &queue, id);
        throw ProgramError(ErrorNumber::Unavailable,
                           u"The printer \"%1\" did not take the whole document: %2"_s.arg(name, reason));
    }
}

} // namespace velmora::printers
