// The room as it is, asked every two seconds: where phones join and how many have.
(() => {
  "use strict";
  const $ = (id) => document.getElementById(id);
  const read = (text) => {
    const room = {};
    for (const line of text.split("\n")) {
      const at = line.indexOf("=");
      if (at > 0) room[line.slice(0, at)] = line.slice(at + 1);
    }
    return room;
  };
  const keypads = (count) => count + (count === 1 ? " keypad votes by itself." : " keypads vote by themselves.");
  const tell = (title, text) => {
    if ($("title").textContent !== title) $("title").textContent = title;
    if ($("text").textContent !== text) $("text").textContent = text;
  };
  let shown = "";

  const show = (room) => {
    const phones = Number(room.phones), rehearse = Number(room.rehearse);
    const open = room.takesPhones === "1" && room.address;
    if (room.takesPhones !== "1")
      tell("This is a rehearsal", keypads(rehearse) + " Phones cannot join.");
    else if (!room.address)
      tell("Phones cannot reach this computer",
           "Connect it to the Wi-Fi that the phones are in, or switch on its own hotspot.\nThe code then appears here by itself.");
    if (open && room.address !== shown) {
      shown = room.address;
      $("code").src = "/join.svg?" + encodeURIComponent(shown);
      $("code").alt = "QR code for http://" + shown;
      $("address").textContent = shown;
    }
    $("count").textContent = phones;
    $("word").textContent = phones === 1 ? "phone has joined" : "phones have joined";
    $("rehearsing").textContent = rehearse > 0 ? keypads(rehearse) : "";
    $("open").hidden = !open;
    $("told").hidden = Boolean(open);
  };
  const ask = async () => {
    try {
      show(read(await (await fetch("/room", { cache: "no-store" })).text()));
    } catch (error) { /* the controller is away; the page stays as it was */ }
    setTimeout(ask, 2000);
  };
  show(read(document.body.dataset.room));
  setTimeout(ask, 2000);
})();
