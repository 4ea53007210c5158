#pragma once

#include <string>

namespace orvane::walkthrough {

/// Connects to an https URL and checks the server's certificate: `certificateFile` (PEM) must vouch for it, and it must
/// be made out to the URL's host. Sends nothing. The protocol library accepts any certificate, as farms with
/// self-signed ones need; this is how somebody who has the farm's certificate makes sure first.
/// @return empty if all is well, else what is wrong in words.
std::string certificateProblem(const std::string& url, const std::string& certificateFile);

}  // namespace orvane::walkthrough
