// A group of headers needs a unit to belong to.
