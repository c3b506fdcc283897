#pragma once

#include "drawing/container/Container.h"

#include <array>

namespace zv::dwg {

/// R13, R14 and R2000: sections stand as they are in the file, and records anywhere in it.
class ContainerR13 final : public Container {
public:
    /// Errors: Damaged.
    static Result<std::unique_ptr<Container>> open(const ByteSource& source, Version version);

    Result<std::vector<std::byte>> section(Section which) const override;
    Result<std::vector<std::byte>> objectBytes(std::uint64_t offset, std::size_t length) const override;

private:
    struct Locator {
        std::uint32_t position = 0, size = 0;
        bool present = false;
    };
    static constexpr std::size_t kLocators = 6;

    explicit ContainerR13(const ByteSource& source) : m_source(source) {}
    Result<std::vector<std::byte>> preview() const;

    const ByteSource& m_source;
    std::uint32_t m_previewPosition = 0;
    std::array<Locator, kLocators> m_locators;
};

} // namespace zv::dwg
