// Channels and their elements, for fuzzing the codecs.
#pragma once

#include <string>

#include "core/interfaces.h"
#include "platform/com_ptr.h"
#include "platform/dom.h"
#include "support/scratch.h"

/// One of the signal types that have a form in the file.
InputSignalType BlockType(BYTE choice);

/// A record of the type, as reading the element leaves it.
ComPtr<IChannelInfo> ReadElement(const dom::Element& element, InputSignalType signalType);

/// False for the number that stands for none: such a channel is in no list, and never written.
bool HasIndex(IChannelInfo* channel);

/// A new document whose root is the record's element.
dom::Document WriteElement(IChannelInfo* channel);

/// The document's elements with all of their attributes.
std::string Describe(const dom::Document& document);

/// Reads and writes a channel until its element has to stay as it is, and ends the run when it
/// does not. Values that have no word of their own, or texts that are no text, may change once.
void RequireStable(IChannelInfo* channel, InputSignalType signalType);

/// Ends the run when a document that could be saved does not load as the same elements.
void RequireSavedIsLoaded(const Scratch& scratch, const dom::Document& document);
