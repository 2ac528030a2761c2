// Nobody outside of its folder should see this.
