#pragma once

#include "support/HostModel.h"

#include <oaidl.h>

namespace zv::test {

/// Whether a host has been told to end: it gives no more answers.
struct HostLife {
    bool ends = false;
};

/// An object of the model as other programs reach it, with one count on it. The model and the life must
/// outlive it.
IDispatch* makeHostObject(HostModel& model, HostLife& life, const HostModel::Object& object);

/// Answers what calls there are, after waiting for one for at most `timeoutMs`.
void serveCalls(DWORD timeoutMs);

} // namespace zv::test
