// The slot of a connection: the pointer that the driver keeps for the library.
#pragma once

#include "tools/client_check/CheckPages.h"

#include <memory>

class CheckSlot
{
public:
    /// Where the slot is.
    enum class Where
    {
        Usual,   ///< wherever memory is to be had, often where the last one was
        Moving,  ///< where no slot was before, ending at a page without access; taken away with its connection
    };

    /// Holds null. Throws CheckFailure.
    explicit CheckSlot(Where where);

    void** Get() const { return m_ppSlot; }
    /// @return whether nothing but the slot was written to.
    bool IsAlone() const;
    /// The connection is closed.
    void Retire();

private:
    BYTE* Neighbours() const { return m_pPages->At(0); }

    void* m_pUsual = nullptr;
    std::shared_ptr<CheckPages> m_pPages;  ///< null for the usual ones; kept for good, for the meaning of the address
    void** m_ppSlot;
};
