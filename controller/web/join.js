// How many phones have joined, asked every two seconds.
(() => {
  "use strict";
  const ask = async () => {
    try {
      const count = parseInt(await (await fetch("/count", { cache: "no-store" })).text(), 10);
      if (!Number.isNaN(count)) {
        document.getElementById("count").textContent = count;
        document.getElementById("word").textContent = count === 1 ? "phone has joined" : "phones have joined";
      }
    } catch (error) { /* the controller is away; the count stays as it was */ }
    setTimeout(ask, 2000);
  };
  ask();
})();
