"""What more than one part of prove needs."""
