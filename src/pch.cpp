// The precompiled header needs a translation unit to hang on.
