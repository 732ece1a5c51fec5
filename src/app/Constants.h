#pragma once
// Placeholder: the shared constants are filled in with the version catalogue.
