// Keeping the plug-in's positions on their spot of the world when the host
// moves its local frame.
//
// Positions in the host's local OpenGL frame (the truck, the GPU cart, the end
// point of a straight push) are only meaningful against the frame's origin,
// which the host moves when the aircraft gets far from it; the aircraft itself
// is then given new local coordinates, ours are not. On hosts that show the
// truck and cart as object instances (11.50 and later) every such position is
// translated by the same amount as the spot it stands on, before it is next
// used. On older hosts nothing is changed.
#pragma once

/// Notices a move of the local origin since the last call and carries every local-frame position
/// of the plug-in into the new frame; otherwise remembers where those positions are in the world.
/// Cheap; call at the start of every callback that compares or places them (the first call after
/// a move does the work, later ones find nothing to do).
void FollowLocalOrigin();

/// Forgets the remembered frame and positions (plug-in enable and disable).
void ForgetLocalOrigin();
