#ifndef UTILThreads_H
#define UTILThreads_H

/** Place holder of the companion's thread helper, of which only assignment is used. It has no field. */
class UTILThreads {
public:
    UTILThreads() = default;
    UTILThreads(const UTILThreads&) = default;
    UTILThreads& operator=(const UTILThreads&) { return *this; }
    UTILThreads& operator=(UTILThreads&&) noexcept { return *this; }
};

#endif
