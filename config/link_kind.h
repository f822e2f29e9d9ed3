// How the headset is reached.
#pragma once

// The numbers are those of "set.json". A file may hold any other number; it is
// kept as it is and counts as a choice, of Wi-Fi.
enum class LinkKind {
    NotChosen = 0,
    Wired = 1,    // USB, through adb
    Wireless = 2, // Wi-Fi
};

// The flag by which pages, commands and files know it.
constexpr LinkKind linkKind(bool wired)
{
    return wired ? LinkKind::Wired : LinkKind::Wireless;
}

constexpr bool isWired(LinkKind link)
{
    return link == LinkKind::Wired;
}
