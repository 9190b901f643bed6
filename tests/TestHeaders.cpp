// The precompiled header of the tests belongs to a target, and a target has a source.
