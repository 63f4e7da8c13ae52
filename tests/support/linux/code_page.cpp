#include "support/code_page.h"

bool ChooseCodePage(UINT page) { return ZorTunedexSetCodePage(page) == S_OK; }
