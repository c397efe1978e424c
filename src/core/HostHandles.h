// The handles the plug-in caches from its host, and forgetting them.
//
// Dataref handles, functions found with XPLMFindSymbol and values read through
// them are looked up once and kept, layer by layer. A handle means something
// only to the host that gave it: a host that starts the plug-in again without
// unloading the library, or a test or benchmark that makes a new simhost for
// each run, would otherwise read another host's memory through it (or whatever
// the new host has put at that address). So every such cache is forgotten when
// the plug-in binds to a host (InitDataRef, which start calls) and at enable.
#pragma once

/// Forgets every handle cached from the host, in every layer, without calling it; the text and
/// texture drawing handles meant to be looked up at start are looked up again at once, the others
/// on their next use.
void ForgetHostHandles();
