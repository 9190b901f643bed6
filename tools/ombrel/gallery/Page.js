// Arrow keys leaf through the large pictures, Escape closes them; everything works without this, too.
addEventListener("keydown", event => {
    const sheet = document.querySelector(".sheet:target");
    const link = { ArrowLeft: ".before", Escape: ".close", ArrowRight: ".after" }[event.key];
    if (sheet && link && !event.altKey && !event.ctrlKey && !event.metaKey)
        sheet.querySelector(link)?.click();
});
