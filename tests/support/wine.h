#pragma once

/// True under Wine, whose MSXML frees elements below a removed one while they are still held. MSXML
/// itself does not, so tests leave that out there alone.
bool RunsOnWine();
