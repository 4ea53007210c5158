#pragma once

namespace orvane::demo {

/// Has this process use a session registry of its own kind if the environment names one in ORVANE_DEMO_REGISTRY, so
/// that demonstrations and tests run side by side. Without it the machine's registry is used. Call it before any other
/// thread is started.
void useRegistryOfEnvironment();

}  // namespace orvane::demo
