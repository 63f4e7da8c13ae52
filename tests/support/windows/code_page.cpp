#include "support/code_page.h"

#include <windows.h>

bool ChooseCodePage(UINT page) { return GetACP() == page; }
