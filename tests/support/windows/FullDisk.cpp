#include "support/FullDisk.h"

namespace zv {

FullDisk::FullDisk(unsigned long size) : m_limit(size), m_handler(nullptr) {}

FullDisk::~FullDisk() = default;

bool FullDisk::canBeMade()
{
    return false;
}

} // namespace zv
