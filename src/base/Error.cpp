#include "base/Error.h"

#include <new>

namespace velmora {

Error CurrentError() {
    try {
        throw;
    } catch (const Error& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return Error(7, QStringLiteral("Out of memory"), QStringLiteral("Velmora"));
    } catch (const std::exception& error) {
        return ProgramError(ErrorNumber::InvalidCall, QString::fromUtf8(error.what()));
    }
}

} // namespace velmora
