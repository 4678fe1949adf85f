// The keypad in a browser. Everything shown comes as text and is set as text.
(() => {
  "use strict";
  const $ = (id) => document.getElementById(id);
  const firstPause = 500, longestPause = 5000;
  let socket = null, pause = firstPause, vote = null, press = "", standing = "none", mine = null, run = "";
  let last = null;            // the vote that was open last
  let typed = "", typing = 0;  // digits of a value, and the timer that ends them

  // ---- What the phone remembers -------------------------------------------------------------------------
  const remember = (key, value) => {
    try {
      if (value === undefined) return localStorage.getItem(key);
      localStorage.setItem(key, value);
    } catch (error) { /* a private window forgets; the number then lasts as long as the page */ }
    if (value !== undefined) kept[key] = value;
    return kept[key] || null;
  };
  const kept = {};

  // ---- Frames -------------------------------------------------------------------------------------------
  const unescape = (text) => text.replace(/\\(.)/g, (all, c) => (c === "n" ? "\n" : c));
  const read = (frame) => {
    const lines = frame.split("\n");
    const message = { word: lines[0], lists: { option: [], item: [] } };
    for (const line of lines.slice(1)) {
      const at = line.indexOf("=");
      const key = line.slice(0, at), value = unescape(line.slice(at + 1));
      if (message.lists[key]) message.lists[key].push(value);
      else message[key] = value;
    }
    return message;
  };
  const say = (text) => {
    if (socket && socket.readyState === WebSocket.OPEN) socket.send(text);
  };

  const connect = () => {
    socket = new WebSocket((location.protocol === "https:" ? "wss://" : "ws://") + location.host + "/phone");
    socket.onopen = () => say("join " + (remember("quorin-token") || "-") + " " + (remember("quorin-keypad") || 0));
    socket.onmessage = (event) => {
      pause = firstPause;
      hear(read(event.data));
    };
    socket.onclose = () => {
      connection(false);
      if (vote) status("Connection lost", "Your keypad comes back by itself.", "bad");
      else show("Connecting …", "Your keypad comes back by itself.", "…", "");
      enable(false);
      setTimeout(connect, pause * (0.75 + Math.random() / 2));
      pause = Math.min(longestPause, pause * 1.6);
    };
  };
  const connection = (on) => {
    $("link").dataset.on = on ? "yes" : "no";
    $("linktext").textContent = on ? "Connected" : "Connecting";
  };

  const hear = (message) => {
    switch (message.word) {
      case "you":
        if (message.run !== run) { run = message.run; vote = last = null; }  // vote numbers begin again in a new controller
        remember("quorin-token", message.token);
        remember("quorin-keypad", message.keypad);
        $("number").textContent = message.keypad;
        connection(true);
        break;
      case "full":
        connection(true);
        show("All keypads are in use", "Please tell the facilitator. This phone tries again by itself.", "!", "bad");
        setTimeout(() => socket.close(), 10000);
        break;
      case "rehearsal":
        connection(true);
        show("This is a rehearsal", message.keypads + " keypads vote by themselves, so phones cannot join yet. This phone tries again by itself.", "…", "");
        setTimeout(() => socket.close(), 10000);
        break;
      case "vote": open(message); break;
      case "yours": yours(message); break;
      case "wait": wait(message); break;
      case "refused": refused(message.reason); break;
      case "stored":
        if (!vote) $("detail").textContent = "Stored. Please wait for the next vote.";
        break;
    }
  };

  // ---- What the last vote was about, for after its close ---------------------------------------------------
  const captionOf = (about, value) => {
    const line = about.lists.option.find((option) => option.startsWith(value + " "));
    return line ? line.slice(value.length + 1).trim() : "";
  };
  const longest = 6;  // lines of a list
  const meaning = (about, text) => {
    if (!about || !text || text === "X") return "";
    if (about.kind === "scale") return captionOf(about, text);
    const parts = text.split("|").map(Number), items = about.lists.item;
    const lines = about.kind === "rank" || about.kind === "order" ? parts.map((item, i) => (i + 1) + ". " + items[item - 1])
                : parts.map((part, i) => (about.kind === "tag" ? "" : part + "  ") + items[i]).filter((line, i) => parts[i] > 0);
    return lines.slice(0, longest).join("\n") + (lines.length > longest ? "\n…" : "");
  };

  // ---- Between votes ------------------------------------------------------------------------------------
  const show = (title, detail, sign, tone, own = "") => {
    vote = null;
    typed = "";
    $("vote").hidden = true;
    $("message").hidden = false;
    $("screen").dataset.tone = tone;
    $("title").textContent = title;
    $("own").textContent = own;
    $("detail").textContent = detail;
    $("sign").textContent = sign;
    $("actions").replaceChildren();
    status("", "", "");
  };
  const wait = (message) => {
    const next = "Please wait for the next vote.";
    const short = message.press.length < 3 ? spoken(message.press, true) : "✓";
    const own = message.press === "X" ? "Abstain" : meaning(last, message.press);
    if (message.result === "counted") show("Your vote counts", next, short, "good", own);
    else if (message.result === "late" && message.press)
      show("Your first vote counts", "The change came after the vote had closed.\n" + next, short, "good", own);
    else if (message.result === "late") show("The vote had closed", "Your press came too late to count.\n" + next, "!", "bad");
    else if (message.why === "keyboard") show("Keypads are resting", "The facilitator is voting from the keyboard.", "…", "");
    else if (message.why === "interrupted") show("The vote was interrupted", "It will be asked again. " + next, "!", "bad");
    else if (message.why === "ended") show("The vote is closed", next, "…", "");
    else show("You are in", "The vote will appear here by itself.", "✓", "good");
  };

  // ---- A vote -------------------------------------------------------------------------------------------
  const open = (message) => {
    const fresh = !vote || vote.vote !== message.vote;
    vote = last = message;
    if (fresh) { press = ""; standing = "none"; mine = null; }
    $("message").hidden = true;
    $("vote").hidden = false;
    $("scale").textContent = (vote.scale || "").trim();
    $("question").textContent = vote.question.trim() || "Please vote";
    $("hint").textContent = hint();
    const before = standing;
    build();
    standing = before;
    mark();
    if (!fresh && standing === "sending") return cast(press);  // the connection went before it could leave
    if (fresh) {
      $("screen").scrollTop = 0;
      status("Please vote", "You can still change it afterwards.", "");
      $("question").focus({ preventScroll: true });
      if (navigator.vibrate) try { navigator.vibrate(40); } catch (error) { /* not allowed before a touch */ }
    }
  };
  const hint = () => {
    const limit = Number(vote.limit), total = Number(vote.total), points = Number(vote.points);
    switch (vote.kind) {
      case "rank": return "Tap all in order, the first choice first.";
      case "order": return limit > 0 ? "Tap up to " + limit + " in order, the first choice first." : "Tap in order, the first choice first.";
      case "tag": return limit > 0 ? "Choose up to " + limit + "." : "Choose as many as you like.";
      case "allocate": return (total > 0 ? "Give out " + total + " points" : "Give out points") + (points > 0 ? ", at most " + points + " each." : ".");
      default: return vote.lists.option.length ? "" : "From " + vote.from + " to " + vote.to + ".";
    }
  };
  const make = (tag, className, text) => {
    const element = document.createElement(tag);
    element.className = className;
    if (text !== undefined) element.textContent = text;
    return element;
  };
  const button = (className, value, caption, act) => {
    const made = make("button", className);
    made.type = "button";
    made.dataset.value = value;
    if (className === "option") {
      made.dir = "auto";
      made.append(make("b", "", value), make("span", "", caption));
    }
    else made.textContent = caption;
    if (className === "option" && value) made.append(make("i", "", "✓"));
    if (className === "option" && !caption) made.setAttribute("aria-label", "Vote " + value);
    made.addEventListener("click", () => act(value));
    return made;
  };

  const build = () => {
    const list = $("options"), actions = $("actions");
    list.replaceChildren();
    actions.replaceChildren();
    list.dataset.look = "list";
    if (vote.kind === "scale" && vote.lists.option.length) buildScale(list);
    else if (vote.kind === "scale") buildTyped(list, actions);
    else if (vote.kind === "allocate") buildPoints(list, actions);
    else buildChoice(list, actions);
    if (vote.abstain === "1") actions.append(button("plain", "X", "Abstain", cast));
    const screen = $("screen");
    screen.classList.remove("dense");
    screen.classList.toggle("dense", screen.scrollHeight > screen.clientHeight);
  };
  const buildScale = (list) => {
    const options = vote.lists.option.map((line) => {
      const at = line.indexOf(" ");
      return [line.slice(0, at), line.slice(at + 1).trim()];
    });
    if (options.every(([, caption]) => !caption))
      list.dataset.look = options.length > 12 ? "many" : options.length % 2 === 0 && options.length <= 6 ? "pairs" : "numbers";
    for (const [value, caption] of options) list.append(button("option", value, caption, cast));
  };
  const buildTyped = (list, actions) => {
    mine = mine || { digits: "" };
    list.dataset.look = "numbers";
    const shown = make("output", "", mine.digits || "–");
    shown.id = "typed";
    const update = () => {
      changed();
      shown.textContent = mine.digits || "–";
      const value = Number(mine.digits);
      send.disabled = !mine.digits || value < Number(vote.from) || value > Number(vote.to);
    };
    list.append(shown);
    for (const digit of ["1", "2", "3", "4", "5", "6", "7", "8", "9"])
      list.append(button("option", digit, "", () => { mine.digits = (mine.digits + digit).slice(0, vote.to.length); update(); }));
    list.append(button("plain clear", "", "Clear", () => { mine.digits = ""; update(); }));
    list.append(button("option", "0", "", () => { mine.digits = (mine.digits + "0").slice(0, vote.to.length); update(); }));
    const send = sender(() => String(Number(mine.digits)));
    actions.append(send);
    update();
  };
  const buildChoice = (list, actions) => {
    mine = mine || { picks: [] };
    const items = vote.lists.item, limit = vote.kind === "rank" ? items.length : Number(vote.limit) || items.length;
    const send = sender(() => vote.kind === "tag" ? items.map((item, i) => (mine.picks.includes(i) ? 1 : 0)).join("|")
                                                  : mine.picks.map((i) => i + 1).join("|"));
    const rows = items.map((item, i) => button("option", "", item, () => {
      const at = mine.picks.indexOf(i);
      if (at >= 0) mine.picks.splice(at, 1);
      else if (mine.picks.length < limit) mine.picks.push(i);
      update();
    }));
    const update = () => {
      changed();
      rows.forEach((row, i) => {
        const at = mine.picks.indexOf(i);
        row.setAttribute("aria-pressed", String(at >= 0));
        row.querySelector("b").textContent = at < 0 ? "" : vote.kind === "tag" ? "✓" : String(at + 1);
      });
      send.disabled = vote.kind === "rank" ? mine.picks.length < limit : mine.picks.length < 1;
    };
    list.append(...rows);
    actions.append(send);
    update();
  };
  const buildPoints = (list, actions) => {
    const items = vote.lists.item, total = Number(vote.total), most = Number(vote.points);
    mine = mine || { given: items.map(() => 0) };
    const sum = () => mine.given.reduce((a, b) => a + b, 0);
    const send = sender(() => mine.given.join("|"));
    const rows = items.map((item, i) => {
      const row = make("div", "points"), shown = make("output", "");
      const change = (by) => () => { mine.given[i] += by; update(); };
      const less = button("", "", "−", change(-1)), more = button("", "", "+", change(1));
      less.setAttribute("aria-label", "One point less: " + item);
      more.setAttribute("aria-label", "One point more: " + item);
      row.dir = "auto";
      row.append(make("span", "", item), less, shown, more);
      return { row, less, more, shown };
    });
    const update = () => {
      changed();
      rows.forEach(({ less, more, shown }, i) => {
        shown.textContent = mine.given[i];
        less.disabled = mine.given[i] < 1;
        more.disabled = (total > 0 && sum() >= total) || (most > 0 && mine.given[i] >= most);
      });
      send.disabled = sum() < 1;
      if (total > 0) send.textContent = "Send my vote (" + (total - sum()) + " left)";
    };
    list.append(...rows.map(({ row }) => row));
    actions.append(send);
    update();
  };
  // The list was changed after it had been sent: what counts is still the earlier one.
  const changed = () => {
    if (standing === "none") return;
    standing = "none";
    status("Not sent yet", "Your earlier vote counts until you send.", "");
  };
  const sender = (text) => button("send", "", "Send my vote", () => cast(text()));

  const cast = (value) => {
    if (!vote) return;
    press = value;
    standing = "sending";
    say("press " + vote.vote + " " + value);
    mark();
  };
  const yours = (message) => {
    if (!vote || message.vote !== vote.vote) return;
    press = message.press;
    standing = message.standing;
    mark();
  };
  const spoken = (value, short) => (value === "X" ? (short ? "–" : "Abstain") : value);
  const mark = () => {
    $("vote").dataset.standing = standing;
    if (vote.kind === "scale" && vote.lists.option.length)
      for (const each of $("options").children) each.setAttribute("aria-pressed", String(each.dataset.value === press));
    for (const each of $("actions").querySelectorAll(".plain")) each.setAttribute("aria-pressed", String(each.dataset.value === press));
    const simple = vote.kind === "scale";
    const after = vote.after.trim().replace(/\s+/g, " ") || "Vote counted";
    if (standing === "counted")
      status("✓ " + after, (simple ? "Your vote: " + spoken(press) + ". " : "") + "You can still change it.", "good");
    else if (standing === "kept") status("Your vote is kept", "It counts as soon as the facilitator is back.", "");
    else if (standing === "sending") status("Sending …", simple ? "Your vote: " + spoken(press) + "." : "", "");
  };

  // ---- Digit keys -----------------------------------------------------------------------------------------
  // The buttons of a vote by what their key is: a value, or the place of an item in its list.
  const keyed = () => {
    const buttons = [...document.querySelectorAll("#options .option")];
    return new Map(buttons.map((each, i) => [each.dataset.value || String(i + 1), each]));
  };
  const endTyping = () => {
    clearTimeout(typing);
    const button = keyed().get(typed);
    typed = "";
    if (vote && button && !button.disabled) button.click();
  };
  // A digit acts at once unless it may be the first of a longer value; 0 stands for 10 where there is no 0.
  const type = (digit) => {
    const values = [...keyed().keys()];
    const begins = (text) => values.filter((value) => value.startsWith(text));
    clearTimeout(typing);
    typed += digit;
    if (!begins(typed).length) typed = digit;
    if (typed === "0" && !values.includes("0")) typed = "10";
    if (begins(typed).length < 2) endTyping();
    else typing = setTimeout(endTyping, 700);
  };
  document.addEventListener("keydown", (event) => {
    if (!vote || event.ctrlKey || event.altKey || event.metaKey) return;
    if (/^[0-9]$/.test(event.key)) type(event.key);
    else if (event.key === "Backspace") for (const clear of document.querySelectorAll("#options .clear")) clear.click();
    else if (event.key === "Enter" && document.activeElement.tagName !== "BUTTON")
      for (const send of document.querySelectorAll("#actions .send:enabled")) send.click();
    else return;
    event.preventDefault();
  });

  const refused = (reason) => {
    if (!vote) return;
    standing = "none";
    press = "";
    mark();
    if (reason === "too fast") status("That was very fast", "Please press your vote once more.", "bad");
    else status("That did not count", "Please press again.", "bad");
  };
  const enable = (on) => {
    if (vote) for (const each of document.querySelectorAll("#vote button, #actions button")) each.disabled = !on;
  };
  const status = (first, second, tone) => {
    $("status").dataset.tone = tone;
    if ($("first").textContent !== first) $("first").textContent = first;
    if ($("second").textContent !== second) $("second").textContent = second;
  };

  connect();
})();
