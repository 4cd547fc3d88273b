#pragma once

#include <algorithm>
#include <atomic>
#include <list>
#include <memory>
#include <type_traits>
#include <utility>

#include "foundation/Contract.h"
#include "foundation/Export.h"
#include "foundation/FiringMark.h"

// Multicast events. A receiver owns a handler that binds one of its member functions, and hooks it to an
// event:
//
//     class LCPanel {
//         void OnTick(LCTimer & timer);
//         LCEvent1Param<LCTimer &>::LCHandler movHandler{*this, &LCPanel::OnTick};
//     };
//     timer.OnTick << movHandler;  // and off again with >>
//
// An event class bears the number of its arguments in its name: LCEvent0Param, LCEvent1Param<A>, and so on.

namespace qrtcl {

/// What an event calls.
template <typename... Args> class Delegate {
public:
    virtual ~Delegate() = default;
    virtual void operator()(Args... args) = 0;
    virtual void Enable() = 0;
    virtual void Disable() = 0;
    virtual bool IsEnabled() const = 0;
};

/// A member function and the receiver it is called on, which must outlive it. While disabled, a call does
/// nothing.
template <typename Base, typename T, typename... Args> class BoundDelegate : public Base {
public:
    BoundDelegate(T * receiver, void (T::*function)(Args...)) : mopReceiver(receiver), mopFunction(function)
    {}
    void operator()(Args... args) override
    {
        if (mbvEnabled) (mopReceiver->*mopFunction)(std::forward<Args>(args)...);
    }
    void Enable() override { mbvEnabled = true; }
    void Disable() override { mbvEnabled = false; }
    bool IsEnabled() const override { return mbvEnabled; }

private:
    T * mopReceiver;
    void (T::*mopFunction)(Args...);
    bool mbvEnabled = true;
};

/// The event of every arity: the list of the delegates it calls, none of which it owns.
///
/// Receivers are called in the order of their subscription, on the thread that fires; an event has no lock.
/// They may hook and unhook anything while it fires, and destroy it, which ends the firing; but not assign to
/// it or change the list by the list's own operations.
///
/// A copy calls the same receivers and goes its own way from there.
template <typename Base, template <typename, typename...> typename Bound, typename... Args>
class Event : public std::list<Base *> {
public:
    /// Makes one member function of a receiver known to events, and owns the delegate for it.
    ///
    /// Unhook it from every event before it dies: it does not do so itself, and an event would call what is
    /// gone. Nor let it die in a firing of that event in which another is hooked, which may come to stand at
    /// its address. An `LCHook` sees to both.
    class LCHandler {
    public:
        template <typename T>
        LCHandler(std::type_identity_t<T> & receiver, void (T::*function)(Args...))
            : LCHandler(&receiver, function)
        {}
        template <typename T>
        LCHandler(std::type_identity_t<T> * receiver, void (T::*function)(Args...))
            : mopDelegate(std::make_unique<Bound<T, Args...>>(receiver, function))
        {}
        LCHandler(LCHandler const &) = delete;
        LCHandler & operator=(LCHandler const &) = delete;
        virtual ~LCHandler()
        {
            QRTCL_REQUIRE(!IsHooked(mopDelegate.get()), "LCHandler::~LCHandler", this,
                          "an event still holds it");
        }

        // These take effect in every event that holds the handler, which keeps its place in the order.
        virtual void Enable() { mopDelegate->Enable(); }
        virtual void Disable() { mopDelegate->Disable(); }
        virtual bool IsEnabled() const { return mopDelegate->IsEnabled(); }

    private:
        friend Event;
        std::unique_ptr<Base> mopDelegate;
    };

    /// A handler that is hooked to one event for as long as it lives. The event must outlive it.
    class LCHook : public LCHandler {
    public:
        template <typename T>
        LCHook(Event & event, std::type_identity_t<T> & receiver, void (T::*function)(Args...))
            : LCHook(event, &receiver, function)
        {}
        template <typename T>
        LCHook(Event & event, std::type_identity_t<T> * receiver, void (T::*function)(Args...))
            : LCHandler(receiver, function), movEvent(event)
        {
            movEvent << *this;
        }
        ~LCHook() override { movEvent.Forget(this->mopDelegate.get()); }

    private:
        Event & movEvent;
    };

    Event() = default;
    /// The copy of an event that is firing holds itself for firing as well, until it has been fired: what is
    /// hooked to it before that is lost.
    Event(Event const & other)
        : std::list<Base *>(other), movFiring{other.movFiring.isFiring}, movToAdd(other.movToAdd),
          movToRemove(other.movToRemove)
    {
        Note();
    }
    Event & operator=(Event const & other)
    {
        QRTCL_REQUIRE(movFiring.mark == nullptr, "Event::operator=", this, "the event is firing");
        std::list<Base *>::operator=(other);
        movFiring.isFiring = other.movFiring.isFiring;
        movToAdd = other.movToAdd;
        movToRemove = other.movToRemove;
        Note();
        return *this;
    }
    virtual ~Event()
    {
        if (movFiring.mark != nullptr) movFiring.mark->state = nullptr;
#if defined(QRTCL_CONTRACT_CHECKS)
        NoteDelegates(this, {});
#endif
    }

    /// Hooks the handler behind those already there. At rest, one that is there stays as it is. While firing,
    /// the handler is called from the next firing on, and one that is there already will be called twice.
    void operator<<(LCHandler & handler)
    {
        QRTCL_REQUIRE(IsFreeHere(), "Event::operator<<", this, "the event is firing on another thread");
        Base * const delegate = handler.mopDelegate.get();
        if (movFiring.isFiring) {
            movToAdd.push_back(delegate);
        } else if (std::find(this->begin(), this->end(), delegate) == this->end()) {
            this->push_back(delegate);
        }
        Note();
    }

    /// Unhooks the handler, however often it is there. While firing, it is not called again, and what hooked
    /// it in the same firing, before or after, is in vain.
    void operator>>(LCHandler & handler)
    {
        QRTCL_REQUIRE(IsFreeHere(), "Event::operator>>", this, "the event is firing on another thread");
        Base * const delegate = handler.mopDelegate.get();
        if (movFiring.isFiring) {
            movToRemove.push_back(delegate);
        } else {
            this->remove(delegate);
        }
        Note();
    }

    /// Fires. What one receiver changes through a reference is seen by those behind it and by the caller.
    ///
    /// An exception of a receiver ends the firing, is passed on, and leaves the event as after any firing. A
    /// receiver may fire the event that is calling it: changes then wait for the end of the outermost firing.
    void operator()(Args... args)
    {
        QRTCL_REQUIRE(IsFreeHere(), "Event::operator()", this, "the event is firing on another thread");
        if (this->empty()) return;
        if (movFiring.mark != nullptr) {
            CallAll(*movFiring.mark, args...);
        } else {
            Firing const firing(*this);
            CallAll(firing.Mark(), args...);
        }
    }

private:
    /// From the start of the outermost firing to its end, by return or by exception.
    class Firing {
    public:
        explicit Firing(Event & event) : movEvent(event), movMark{&event.movFiring, cotFirings}
        {
            SetInnermost(&movMark);
            movEvent.movFiring.mark = &movMark;
            movEvent.movFiring.isFiring = true;
            if (movEvent.HasPending()) [[unlikely]]
                movEvent.DropPending();
        }
        Firing(Firing const &) = delete;
        Firing & operator=(Firing const &) = delete;
        ~Firing()
        {
            if (movMark.state != nullptr) {
                if (movEvent.HasPending()) [[unlikely]]
                    movEvent.ApplyPending();
                movEvent.movFiring.isFiring = false;
                movEvent.movFiring.mark = nullptr;
            }
            SetInnermost(movMark.outer);
        }
        FiringMark const & Mark() const { return movMark; }

    private:
        /// As seen by what ends the thread here.
        static void SetInnermost(FiringMark * mark)
        {
            std::atomic_signal_fence(std::memory_order_seq_cst);
            cotFirings = mark;
            std::atomic_signal_fence(std::memory_order_seq_cst);
        }

        Event & movEvent;
        FiringMark movMark;
    };

    void CallAll(FiringMark const & mark, std::remove_reference_t<Args> &... args)
    {
        for (Base * const delegate : *this) {
            if (delegate == nullptr || (!movToRemove.empty() && IsToRemove(delegate))) continue;
            (*delegate)(args...);
            if (mark.state == nullptr) [[unlikely]]
                return;
        }
    }
    bool IsToRemove(Base const * delegate) const
    {
        return std::find(movToRemove.begin(), movToRemove.end(), delegate) != movToRemove.end();
    }
    /// Unhooks for good what is about to be destroyed: the next delegate may come to stand at its address, so
    /// nothing may be left that holds it.
    void Forget(Base * delegate) noexcept
    {
        movToAdd.remove(delegate);
        movToRemove.remove(delegate);
        if (movFiring.mark == nullptr) {
            this->remove(delegate);
        } else {
            std::replace(this->begin(), this->end(), delegate, static_cast<Base *>(nullptr));
            movFiring.hasGaps = true;
        }
        Note();
    }
    bool HasPending() const { return !movToAdd.empty() || !movToRemove.empty() || movFiring.hasGaps; }
    // Kept apart from the road of a plain firing.
    [[gnu::cold]] void DropPending()
    {
        movToAdd.clear();
        movToRemove.clear();
        Note();
    }
    [[gnu::cold]] void ApplyPending() noexcept
    {
        this->splice(this->end(), movToAdd);
        for (Base * const delegate : movToRemove) this->remove(delegate);
        if (std::exchange(movFiring.hasGaps, false)) this->remove(nullptr);
        Note();
    }

    // For the contract checks.

    bool IsFreeHere() const
    {
        FiringMark const * mark = cotFirings;
        while (mark != nullptr && mark != movFiring.mark) mark = mark->outer;
        return mark == movFiring.mark;
    }
    void Note() const
    {
#if defined(QRTCL_CONTRACT_CHECKS)
        std::vector<void const *> held;
        for (Base const * const delegate : *this) {
            if (!movFiring.isFiring || !IsToRemove(delegate)) held.push_back(delegate);
        }
        for (Base const * const delegate : movToAdd) {
            if (movFiring.isFiring && !IsToRemove(delegate)) held.push_back(delegate);
        }
        NoteDelegates(this, std::move(held));
#endif
    }
    /// What has left by the list's own operations is not held.
    static bool IsHooked(Base * delegate)
    {
        auto const * const event = static_cast<Event const *>(FindEventOf(delegate));
        return event != nullptr &&
               (std::count(event->begin(), event->end(), delegate) != 0 ||
                std::count(event->movToAdd.begin(), event->movToAdd.end(), delegate) != 0);
    }

    FiringState movFiring;
    std::list<Base *> movToAdd;
    std::list<Base *> movToRemove;
};

}  // namespace qrtcl

// The family: delegates and events of each arity.

class QRTCL_API delegate_base0 : public qrtcl::Delegate<> {};
template <typename A> class delegate_base1 : public qrtcl::Delegate<A> {};
template <typename A, typename B> class delegate_base2 : public qrtcl::Delegate<A, B> {};
template <typename A, typename B, typename C> class delegate_base3 : public qrtcl::Delegate<A, B, C> {};
template <typename A, typename B, typename C, typename D, typename E>
class delegate_base5 : public qrtcl::Delegate<A, B, C, D, E> {};

template <typename T> class delegate0 : public qrtcl::BoundDelegate<delegate_base0, T> {
    using qrtcl::BoundDelegate<delegate_base0, T>::BoundDelegate;
};
template <typename T, typename A> class delegate1 : public qrtcl::BoundDelegate<delegate_base1<A>, T, A> {
    using qrtcl::BoundDelegate<delegate_base1<A>, T, A>::BoundDelegate;
};
template <typename T, typename A, typename B>
class delegate2 : public qrtcl::BoundDelegate<delegate_base2<A, B>, T, A, B> {
    using qrtcl::BoundDelegate<delegate_base2<A, B>, T, A, B>::BoundDelegate;
};
template <typename T, typename A, typename B, typename C>
class delegate3 : public qrtcl::BoundDelegate<delegate_base3<A, B, C>, T, A, B, C> {
    using qrtcl::BoundDelegate<delegate_base3<A, B, C>, T, A, B, C>::BoundDelegate;
};
template <typename T, typename A, typename B, typename C, typename D, typename E>
class delegate5 : public qrtcl::BoundDelegate<delegate_base5<A, B, C, D, E>, T, A, B, C, D, E> {
    using qrtcl::BoundDelegate<delegate_base5<A, B, C, D, E>, T, A, B, C, D, E>::BoundDelegate;
};

class QRTCL_API LCEvent0Param : public qrtcl::Event<delegate_base0, delegate0> {};
template <typename A> class LCEvent1Param : public qrtcl::Event<delegate_base1<A>, delegate1, A> {};
template <typename A, typename B>
class LCEvent2Param : public qrtcl::Event<delegate_base2<A, B>, delegate2, A, B> {};
template <typename A, typename B, typename C>
class LCEvent3Param : public qrtcl::Event<delegate_base3<A, B, C>, delegate3, A, B, C> {};
template <typename A, typename B, typename C, typename D, typename E>
class LCEvent5Param : public qrtcl::Event<delegate_base5<A, B, C, D, E>, delegate5, A, B, C, D, E> {};
