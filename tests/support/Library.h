// Every public header of the library.
#pragma once

#include <kiv/ActionBuilder.h>
#include <kiv/CleanKDXParamString.h>
#include <kiv/Error.h>
#include <kiv/ExtractActionOrStateFromKDX.h>
#include <kiv/KDXBuilder.h>
#include <kiv/KDXCheck.h>
#include <kiv/KDXDocument.h>
#include <kiv/KDXFormatting.h>
#include <kiv/KDXPath.h>
#include <kiv/KDXReader.h>
#include <kiv/KDXToStringMapMap.h>
#include <kiv/Messages.h>
#include <kiv/ObjectKDXParser.h>
#include <kiv/StringMapMapToKDX.h>
#include <kiv/StringUtilities.h>
