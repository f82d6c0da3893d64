// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "kestrel/mod/vctp3/tarnlibapi/base/aassert.h"
#include "kestrel/mod/vctp3/tarnlibapi/base/aref.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <utility>

/// A doubly linked list that owns its entries. Copies copy the entries; no operation recurses,
/// however long the list is. Removing an entry leaves all iterators to other entries valid.
template <typename T> class nonstd_list
{
    struct EntryStruct
    {
        template <typename... V>
        explicit EntryStruct(V &&...v)
            : value(std::forward<V>(v)...)
        {
        }
        EntryStruct *next = nullptr;
        EntryStruct *previous = nullptr;
        T value;
    };

    template <typename V> class Iterator
    {
    public:
        using iterator_category = std::bidirectional_iterator_tag;
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using pointer = V *;
        using reference = V &;

        Iterator() = default;
        /// A changing iterator converts to a reading one.
        operator Iterator<T const>() const { return {list, entry}; }

        V &operator*() const { return entry->value; }
        V *operator->() const { return &entry->value; }
        Iterator &operator++()
        {
            entry = entry->next;
            return *this;
        }
        Iterator operator++(int)
        {
            Iterator before = *this;
            ++*this;
            return before;
        }
        /// Stepping back from the end gives the last entry.
        Iterator &operator--()
        {
            entry = entry ? entry->previous : list->tail;
            return *this;
        }
        Iterator operator--(int)
        {
            Iterator before = *this;
            --*this;
            return before;
        }
        friend bool operator==(Iterator const &a, Iterator const &b) { return a.entry == b.entry; }

    private:
        friend class nonstd_list;
        template <typename> friend class Iterator;
        Iterator(nonstd_list const *of, EntryStruct *at)
            : list(of)
            , entry(at)
        {
        }
        nonstd_list const *list = nullptr;
        EntryStruct *entry = nullptr;
    };

public:
    using value_type = T;
    using iterator = Iterator<T>;
    using const_iterator = Iterator<T const>;
    using reverse_iterator = std::reverse_iterator<iterator>;
    using const_reverse_iterator = std::reverse_iterator<const_iterator>;

    nonstd_list() = default;
    nonstd_list(std::initializer_list<T> items)
    {
        for (T const &item : items)
            push_back(item);
    }
    nonstd_list(nonstd_list const &other) { append(other); }
    nonstd_list(nonstd_list &&other) noexcept { swap(other); }
    ~nonstd_list() { clear(); }
    nonstd_list &operator=(nonstd_list const &other)
    {
        if (this != &other)
            nonstd_list(other).swap(*this);
        return *this;
    }
    nonstd_list &operator=(nonstd_list &&other) noexcept
    {
        nonstd_list(std::move(other)).swap(*this);
        return *this;
    }
    void swap(nonstd_list &other) noexcept
    {
        std::swap(head, other.head);
        std::swap(tail, other.tail);
        std::swap(count, other.count);
    }

    std::uint32_t size() const { return count; }
    bool empty() const { return count == 0; }
    void clear()
    {
        while (head)
            erase(begin());
    }

    iterator begin() { return {this, head}; }
    iterator end() { return {this, nullptr}; }
    const_iterator begin() const { return {this, head}; }
    const_iterator end() const { return {this, nullptr}; }
    reverse_iterator rbegin() { return reverse_iterator(end()); }
    reverse_iterator rend() { return reverse_iterator(begin()); }
    const_reverse_iterator rbegin() const { return const_reverse_iterator(end()); }
    const_reverse_iterator rend() const { return const_reverse_iterator(begin()); }

    /// First and last value; the list must not be empty.
    T &front() { return head->value; }
    T const &front() const { return head->value; }
    T &back() { return tail->value; }
    T const &back() const { return tail->value; }

    void push_back(T const &item) { link(nullptr, new EntryStruct(item)); }
    void push_back(T &&item) { link(nullptr, new EntryStruct(std::move(item))); }
    void push_front(T const &item) { link(head, new EntryStruct(item)); }
    void push_front(T &&item) { link(head, new EntryStruct(std::move(item))); }
    /// Puts a value in front of \a place; `end()` appends. Returns its place.
    iterator insert(iterator place, T item)
    {
        EntryStruct *entry = new EntryStruct(std::move(item));
        link(place.entry, entry);
        return {this, entry};
    }
    /// Appends copies of all values of \a other, which may be this list.
    void append(nonstd_list const &other)
    {
        EntryStruct const *entry = other.head;
        for (std::uint32_t left = other.count; left != 0; --left, entry = entry->next)
            push_back(entry->value);
    }
    /// The list must not be empty.
    void pop_back() { erase({this, tail}); }
    void pop_front() { erase(begin()); }

    /// Removes the value at \a place and returns the place behind it.
    iterator erase(iterator place)
    {
        EntryStruct *entry = place.entry;
        EntryStruct *next = entry->next;
        (entry->previous ? entry->previous->next : head) = next;
        (next ? next->previous : tail) = entry->previous;
        --count;
        delete entry;
        return {this, next};
    }

    void reverse()
    {
        for (EntryStruct *entry = head; entry; entry = entry->previous)
            std::swap(entry->next, entry->previous);
        std::swap(head, tail);
    }

private:
    void link(EntryStruct *next, EntryStruct *entry)
    {
        EntryStruct *previous = next ? next->previous : tail;
        entry->next = next;
        entry->previous = previous;
        (previous ? previous->next : head) = entry;
        (next ? next->previous : tail) = entry;
        ++count;
    }

    EntryStruct *head = nullptr;
    EntryStruct *tail = nullptr;
    std::uint32_t count = 0;
};

/// A list value: copies share one `nonstd_list` until one of them is changed. Every non-const
/// access makes the list private first, `begin` and `end` among them; use `const_begin`,
/// `const_end`, `const_at` or a const reference to read without that.
/// Thread: copies may be used in different threads; one object by one thread at a time.
template <typename T> class AList
{
public:
    using value_type = T;
    using iterator = typename nonstd_list<T>::iterator;
    using const_iterator = typename nonstd_list<T>::const_iterator;
    using reverse_iterator = typename nonstd_list<T>::reverse_iterator;
    using const_reverse_iterator = typename nonstd_list<T>::const_reverse_iterator;

    AList() = default;
    AList(std::initializer_list<T> items)
    {
        if (items.size() != 0)
            ref() = nonstd_list<T>(items);
    }

    /// The list for changing: made when there is none, copied when it is shared.
    nonstd_list<T> &ref()
    {
        if (!shared)
            shared = ARef<Shared>::adopt(new Shared);
        else if (!shared->count.unique())
            shared = ARef<Shared>::adopt(new Shared(shared->list));
        return shared->list;
    }
    /// The list for reading.
    nonstd_list<T> const &const_ref() const
    {
        static nonstd_list<T> const none;
        return shared ? shared->list : none;
    }

    std::uint32_t size() const { return shared ? shared->list.size() : 0; }
    bool empty() const { return size() == 0; }
    void clear() { shared.reset(); }
    /// Whether both lists are one: they share their entries, or neither has any.
    bool same_list(AList const &other) const
    {
        return shared.get() == other.shared.get() || (empty() && other.empty());
    }

    iterator begin() { return ref().begin(); }
    iterator end() { return ref().end(); }
    const_iterator begin() const { return const_ref().begin(); }
    const_iterator end() const { return const_ref().end(); }
    const_iterator const_begin() const { return const_ref().begin(); }
    const_iterator const_end() const { return const_ref().end(); }
    reverse_iterator rbegin() { return ref().rbegin(); }
    reverse_iterator rend() { return ref().rend(); }
    const_reverse_iterator rbegin() const { return const_ref().rbegin(); }
    const_reverse_iterator rend() const { return const_ref().rend(); }

    /// The value at \a index, counted from 0; the walk starts at the nearer end. Outside:
    /// an assertion, and a default value, which for `at` is a scratch value of the thread.
    T &at(std::uint32_t index)
    {
        return A_ASSERT(index < size()) ? *place(ref(), index) : scratch();
    }
    T const &const_at(std::uint32_t index) const
    {
        return A_ASSERT(index < size()) ? *place(const_ref(), index) : default_value();
    }
    T const &at(std::uint32_t index) const { return const_at(index); }

    /// First and last value. Of an empty list: as `at`.
    T &front() { return A_ASSERT(!empty()) ? ref().front() : scratch(); }
    T const &front() const { return A_ASSERT(!empty()) ? const_ref().front() : default_value(); }
    T &back() { return A_ASSERT(!empty()) ? ref().back() : scratch(); }
    T const &back() const { return A_ASSERT(!empty()) ? const_ref().back() : default_value(); }

    void push_back(T const &item) { ref().push_back(T(item)); }
    void push_back(T &&item) { ref().push_back(std::move(item)); }
    void push_front(T const &item) { ref().push_front(T(item)); }
    void push_front(T &&item) { ref().push_front(std::move(item)); }
    /// `push` and `pop` work at the back, `unshift` and `shift` at the front. `pop` and `shift`
    /// return the value that goes; of an empty list: an assertion and a default value.
    void push(T const &item) { push_back(item); }
    void push(T &&item) { push_back(std::move(item)); }
    void unshift(T const &item) { push_front(item); }
    void unshift(T &&item) { push_front(std::move(item)); }
    T pop()
    {
        if (!A_ASSERT(!empty()))
            return T();
        T last = std::move(ref().back());
        ref().pop_back();
        return last;
    }
    T shift()
    {
        if (!A_ASSERT(!empty()))
            return T();
        T first = std::move(ref().front());
        ref().pop_front();
        return first;
    }
    /// Of an empty list: an assertion, and nothing happens.
    void pop_back()
    {
        if (A_ASSERT(!empty()))
            ref().pop_back();
    }
    void pop_front()
    {
        if (A_ASSERT(!empty()))
            ref().pop_front();
    }
    /// Appends all values of \a other. An empty list comes to share the other's entries.
    void append(AList const &other)
    {
        if (empty())
            *this = other;
        else if (!other.empty())
            ref().append(AList(other).const_ref());
    }

    void reverse()
    {
        if (size() > 1)
            ref().reverse();
    }

    bool contains_item(T const &item) const
    {
        for (T const &value : const_ref()) {
            if (value == item)
                return true;
        }
        return false;
    }
    /// Removes every value that equals \a item and returns how many went.
    std::uint32_t remove_item(T const &item)
    {
        T const wanted = item;
        return remove_matches([&wanted](T const &value) { return value == wanted; });
    }
    /// The values for which \a predicate is true, in order.
    template <typename Predicate> AList find_matches(Predicate const &predicate) const
    {
        AList matches;
        for (T const &value : const_ref()) {
            if (predicate(value))
                matches.push_back(value);
        }
        return matches;
    }
    /// Removes those values and returns how many went. Nothing is copied when there are none.
    template <typename Predicate> std::uint32_t remove_matches(Predicate const &predicate)
    {
        AList kept;
        for (T const &value : const_ref()) {
            if (!predicate(value))
                kept.push_back(value);
        }
        std::uint32_t const removed = size() - kept.size();
        if (removed != 0)
            *this = std::move(kept);
        return removed;
    }

    friend bool operator==(AList const &a, AList const &b)
    {
        if (a.size() != b.size())
            return false;
        const_iterator other = b.const_begin();
        for (T const &value : a.const_ref()) {
            if (!(value == *other++))
                return false;
        }
        return true;
    }

private:
    struct Shared
    {
        Shared() = default;
        explicit Shared(nonstd_list<T> const &from)
            : list(from)
        {
        }
        bool take_reference() { return count.take(); }
        void release_reference()
        {
            if (count.release())
                delete this;
        }
        ASharedCount count;
        nonstd_list<T> list;
    };

    template <typename List> static auto place(List &list, std::uint32_t index)
    {
        if (index < list.size() / 2)
            return std::next(list.begin(), index);
        return std::prev(list.end(), static_cast<std::ptrdiff_t>(list.size() - index));
    }
    static T const &default_value()
    {
        static T const value{};
        return value;
    }
    static T &scratch()
    {
        thread_local T value{};
        value = T();
        return value;
    }

    ARef<Shared> shared;
};
