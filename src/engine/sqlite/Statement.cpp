#include "engine/sqlite/Statement.h"

#include <sqlite3.h>

namespace velmora::engine::sqlite {

namespace {

// More sets than this open on one text at a time are rare; their statements are prepared anew.
constexpr std::size_t idleLimit = 4;

} // namespace

Statement::Statement(Statement&& other) noexcept
    : text_(std::move(other.text_)), handle_(std::exchange(other.handle_, nullptr)) {}

Statement& Statement::operator=(Statement&& other) noexcept {
    if (this != &other) {
        HandBack();
        text_ = std::move(other.text_);
        handle_ = std::exchange(other.handle_, nullptr);
    }
    return *this;
}

Statement::~Statement() {
    HandBack();
}

void Statement::HandBack() {
    if (handle_ != nullptr) {
        text_->TakeBack(std::exchange(handle_, nullptr));
    }
}

bool Statement::Step(const QString& sql) {
    const int code = sqlite3_step(handle_);
    if (code == SQLITE_ROW) {
        return true;
    }
    if (code != SQLITE_DONE) {
        text_->Owner().Fail(code, sql);
    }
    return false;
}

void Statement::Reset() {
    sqlite3_reset(handle_);
}

void Statement::CheckBound(int code) {
    text_->Owner().Check(code);
}

void Statement::BindNull(int place) {
    CheckBound(sqlite3_bind_null(handle_, place));
}

void Statement::BindInteger(int place, qint64 number) {
    CheckBound(sqlite3_bind_int64(handle_, place, number));
}

void Statement::BindReal(int place, double number) {
    CheckBound(sqlite3_bind_double(handle_, place, number));
}

void Statement::BindText(int place, const char* utf8, qsizetype size) {
    CheckBound(sqlite3_bind_text64(handle_, place, utf8 == nullptr ? "" : utf8, static_cast<sqlite3_uint64>(size),
                                   SQLITE_STATIC, SQLITE_UTF8));
}

void Statement::Bind(int place, const Field& field) {
    switch (field.StoredKind()) {
    case Field::Kind::Null:
        return BindNull(place);
    case Field::Kind::Integer:
        return BindInteger(place, field.StoredInteger());
    case Field::Kind::Real:
        return BindReal(place, field.ToReal());
    case Field::Kind::Text:
        return BindText(place, field.Utf8().data(), static_cast<qsizetype>(field.Utf8().size()));
    }
}

PreparedText::~PreparedText() {
    for (sqlite3_stmt* handle : idle_) {
        sqlite3_finalize(handle);
    }
}

Statement PreparedText::Acquire(const QString& sql) {
    if (!idle_.empty()) {
        sqlite3_stmt* handle = idle_.back();
        idle_.pop_back();
        return Statement(shared_from_this(), handle);
    }
    idle_.reserve(idleLimit);
    sqlite3_stmt* handle = nullptr;
    connection_.Check(sqlite3_prepare_v3(connection_.Handle(), sql_.constData(), static_cast<int>(sql_.size() + 1),
                                         SQLITE_PREPARE_PERSISTENT, &handle, nullptr),
                      sql);
    return Statement(shared_from_this(), handle);
}

void PreparedText::TakeBack(sqlite3_stmt* handle) noexcept {
    sqlite3_reset(handle);
    if (idle_.size() < idleLimit) {
        idle_.push_back(handle);
    } else {
        sqlite3_finalize(handle);
    }
}

} // namespace velmora::engine::sqlite
