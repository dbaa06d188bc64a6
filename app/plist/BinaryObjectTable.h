#pragma once

#include <QByteArrayView>

#include <cstdint>
#include <optional>

/// One object of a binary property list as it stands in the file: where its contents begin and how many bytes
/// of them there are. A container's contents are references, a dictionary's keys before its values.
struct BinaryObject {
    enum class Kind : std::uint8_t { scalar, asciiString, utf16String, array, dictionary };

    Kind kind = Kind::scalar;
    std::uint64_t contents = 0;
    std::uint64_t bytes = 0;
    std::uint64_t entries = 0;

    bool isString() const { return kind == Kind::asciiString || kind == Kind::utf16String; }
    bool isContainer() const { return kind == Kind::array || kind == Kind::dictionary; }
    /// How many references the contents hold.
    std::uint64_t references() const;
};

/// A binary property list as the table of objects that it is. Checks that things lie where they may; what the
/// objects refer to is the caller's to follow.
class BinaryObjectTable {
public:
    /// The file must outlive the table.
    explicit BinaryObjectTable(QByteArrayView file) : file_(file) {}

    /// Reads the last 32 bytes, before anything else. False when they contradict themselves or the file, or
    /// tell of more than `maxObjects` objects.
    bool readTrailer(std::uint64_t maxObjects);

    std::uint64_t count() const { return count_; }
    std::uint64_t root() const { return root_; }

    /// The object of that number. Nothing when there is none, when it reaches beyond the objects' part of the
    /// file, or when it is of no property-list type (null, a set).
    std::optional<BinaryObject> object(std::uint64_t index) const;

    /// A container's reference number `index`, below its references(). May point at no object.
    std::uint64_t reference(const BinaryObject& container, std::uint64_t index) const;

    /// Whether a string has a NUL among its characters.
    bool holdsNul(const BinaryObject& string) const;

private:
    std::uint64_t number(std::uint64_t position, std::uint64_t size) const;
    std::optional<BinaryObject> objectAt(std::uint64_t start) const;
    std::optional<BinaryObject> counted(std::uint8_t type, std::uint64_t position, std::uint64_t count) const;

    QByteArrayView file_;
    std::uint64_t offsetSize_ = 0;
    std::uint64_t referenceSize_ = 0;
    std::uint64_t count_ = 0;
    std::uint64_t root_ = 0;
    std::uint64_t table_ = 0;
};
