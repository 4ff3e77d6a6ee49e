#pragma once

#include <filesystem>
#include <memory>
#include <utility>

#include "tools/studio/shared/Result.h"
#include "tools/system/Descriptor.h"

namespace vx::tools::studio {

/// The right to use a store, which one studio has at a time: a lock on the file FILE.lock beside
/// it, which says who holds it. Held until the object goes, or its process.
class StoreClaim {
public:
    /// Who chose a store's path: the user named it, or it is the studio's usual one, at which
    /// whatever cannot be read is a damaged store.
    enum class Path { Named, Usual };

    /// Claims the store `file`, whose directory is made when it is not there; or says what is in
    /// the way: another studio, or, at a path that was named, something that is not ours and that
    /// the application would put aside or not use. A damaged store of ours is in nobody's way.
    /// Throws std::system_error when it cannot be seen to.
    static Result<std::shared_ptr<const StoreClaim>> make(const std::filesystem::path& file,
                                                          Path whose);

    explicit StoreClaim(system::Descriptor lock) : lock_(std::move(lock)) {}

private:
    system::Descriptor lock_;
};

} // namespace vx::tools::studio
