// Gutils: small containers and general helpers.
//
// One include for the whole unit: containers (TGIntStack, TGCurrencyArray,
// TGObjectList, TGStringMap), currency rounding, font-style packing, program
// start, environment expansion, PE version information, comma-separated
// lines, small helpers, the operating-system flags, the yes/no questions
// and information window with their user-interface service, and the
// registry helpers with the control and component interfaces they persist.
#pragma once

#include "quill/frame/errors.h"
#include "quill/utils/commatext.h"
#include "quill/utils/components.h"
#include "quill/utils/containers.h"
#include "quill/utils/environment.h"
#include "quill/utils/fontstyle.h"
#include "quill/utils/helpers.h"
#include "quill/utils/osflags.h"
#include "quill/utils/process.h"
#include "quill/utils/questions.h"
#include "quill/utils/registry.h"
#include "quill/utils/rounding.h"
#include "quill/utils/uiservice.h"
#include "quill/utils/versioninfo.h"
