#include "base/Program.h"

#include <stdexcept>

namespace velmora {

namespace {
// The program's only mutable global: set by ProgramInstaller, read by CurrentProgram.
Program* currentProgram = nullptr; // NOLINT(cppcoreguidelines-avoid-non-const-global-variables)
} // namespace

Program::Program(Services services, QString title) : services_(std::move(services)), title_(std::move(title)) {}

Program::~Program() {
    while (!parts_.empty()) {
        parts_.pop_back();
    }
}

void* Program::FindPart(const char* tag) const {
    for (const auto& [known, part] : parts_) {
        if (known == tag) {
            return part.get();
        }
    }
    return nullptr;
}

void Program::AddPart(const char* tag, std::shared_ptr<void> part) {
    parts_.emplace_back(tag, std::move(part));
}

ProgramInstaller::ProgramInstaller(Program& program) {
    if (currentProgram != nullptr) {
        throw std::logic_error("a program is already installed");
    }
    currentProgram = &program;
}

ProgramInstaller::~ProgramInstaller() {
    currentProgram = nullptr;
}

Program& CurrentProgram() {
    if (currentProgram == nullptr) {
        throw std::logic_error("no program is installed");
    }
    return *currentProgram;
}

Program* CurrentProgramOrNull() {
    return currentProgram;
}

} // namespace velmora
